#import "WebKit/WebViewEngine.h"

#import "WebKit/WebRunLoopSource.h"
#import "WebKit/WebView.h"

#include <algorithm>
#include <cmath>
#include <vector>

using vireonix::platform::PageCursor;
using vireonix::platform::PagePixels;
using vireonix::platform::WebPage;

namespace {

/// Those that have a page; not retained.
std::vector<WebViewEngine *> &engines() {
  static std::vector<WebViewEngine *> list;
  return list;
}

NSBitmapImageRep *makePicture(const PagePixels &size) {
  return [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr pixelsWide:size.width
                                                 pixelsHigh:size.height
                                              bitsPerSample:8
                                            samplesPerPixel:4
                                                   hasAlpha:YES
                                                   isPlanar:NO
                                             colorSpaceName:NSDeviceRGBColorSpace
                                                bytesPerRow:static_cast<NSInteger>(size.width) * 4
                                               bitsPerPixel:32];
}

} // namespace

@implementation WebViewEngine

+ (void)synchronizeAll {
  const std::vector<WebViewEngine *> all = engines();
  for (WebViewEngine *engine : all)
    [engine synchronize];
}

- (id)initWithView:(WebView *)view opener:(WebViewEngine *)opener {
  self = [super init];
  if (self == nil)
    return nil;
  view_ = view;
  resourceIdentifiers_ = [NSMutableDictionary new];
  client_ = makeWebPageClient(self);
  page_ = WebPage::make(*client_, [opener page]);
  if (page_ == nullptr)
    return self;
  [[WebRunLoopSource sharedSource] start];
  engines().push_back(self);
  [self synchronize];
  return self;
}

- (void)dealloc {
  [self close];
  [picture_ release];
  [resourceIdentifiers_ release];
  [super dealloc];
}

- (void)close {
  view_ = nil;
  if (page_ == nullptr)
    return;
  auto &all = engines();
  all.erase(std::remove(all.begin(), all.end(), self), all.end());
  [[WebRunLoopSource sharedSource] stop];
  page_.reset();
}

- (WebPage *)page {
  return page_.get();
}

- (WebView *)view {
  return view_;
}

- (BOOL)shouldBeShown {
  NSWindow *window = [view_ window];
  return window != nil && [window isVisible] && ![window isMiniaturized] &&
         ![view_ isHiddenOrHasHiddenAncestor] && !NSIsEmptyRect([view_ visibleRect]);
}

- (void)synchronize {
  if (page_ == nullptr || view_ == nil)
    return;
  const NSSize size = [view_ bounds].size;
  if (!NSEqualSizes(size, size_)) {
    size_ = size;
    page_->resize(static_cast<int>(std::lround(size.width)),
                  static_cast<int>(std::lround(size.height)));
  }
  const BOOL shown = [self shouldBeShown];
  if (shown != shown_) {
    shown_ = shown;
    page_->setShown(shown);
    [view_ setNeedsDisplay:YES];
  }
  NSWindow *window = [view_ window];
  page_->setFocused([window isKeyWindow] && [window firstResponder] == view_);
}

- (NSBitmapImageRep *)picture {
  const std::optional<PagePixels> size = page_ == nullptr ? std::nullopt : page_->pixelSize();
  if (!size)
    return nil;
  if ([picture_ pixelsWide] != size->width || [picture_ pixelsHigh] != size->height) {
    [picture_ release];
    picture_ = makePicture(*size);
    pictureIsCurrent_ = NO;
  }
  if (!pictureIsCurrent_) {
    // In points: the page is drawn for whole pixels, so the scale divides them.
    const double scale = size->scale;
    [picture_ setSize:NSMakeSize(size->width / scale, size->height / scale)];
    pictureIsCurrent_ = page_->copyPixels(*size, [picture_ bitmapData]);
  }
  return pictureIsCurrent_ ? picture_ : nil;
}

- (NSCursor *)cursor {
  return cursor_ == nil ? [NSCursor arrowCursor] : cursor_;
}

@end

@implementation WebViewEngine (Page)

- (void)pixelsChanged {
  pictureIsCurrent_ = NO;
  [view_ setNeedsDisplay:YES];
}

- (void)cursorChanged:(PageCursor)cursor {
  switch (cursor) {
  case PageCursor::arrow:
    cursor_ = [NSCursor arrowCursor];
    break;
  case PageCursor::hand:
    cursor_ = [NSCursor pointingHandCursor];
    break;
  case PageCursor::text:
    cursor_ = [NSCursor IBeamCursor];
    break;
  }
  NSWindow *window = [view_ window];
  if (window == nil)
    return;
  [window invalidateCursorRectsForView:view_];
  // The rectangle takes effect when the pointer moves next; the page changed under it now.
  const NSPoint pointer = [view_ convertPoint:[window mouseLocationOutsideOfEventStream]
                                     fromView:nil];
  if (NSPointInRect(pointer, [view_ visibleRect]))
    [cursor_ set];
}

- (void)focusLeft:(BOOL)forward {
  NSWindow *window = [view_ window];
  if ([window firstResponder] != view_)
    return;
  if (forward)
    [window selectKeyViewFollowingView:view_];
  else
    [window selectKeyViewPrecedingView:view_];
}

- (void)processEnded {
  pictureIsCurrent_ = NO;
  [view_ setNeedsDisplay:YES];
}

@end
