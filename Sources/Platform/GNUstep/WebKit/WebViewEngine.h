// What joins a view and its page: it keeps the page's size, visibility and focus in step with the
// view, holds the page's picture, and brings the page's news to the view's delegates.
#pragma once

#import <AppKit/AppKit.h>

#include "WebKit/engine/web_page.h"

@class WebView;

@interface WebViewEngine : NSObject {
@private
  WebView *view_;
  std::unique_ptr<vireonix::platform::WebPageClient> client_;
  std::unique_ptr<vireonix::platform::WebPage> page_;
  NSBitmapImageRep *picture_;
  BOOL pictureIsCurrent_;
  NSSize size_;
  BOOL shown_;
  NSCursor *cursor_;
  NSUInteger resources_;
  NSMutableDictionary *resourceIdentifiers_;
}

/// Lets every page that lives follow its view.
+ (void)synchronizeAll;

/// Makes the page for `view`, which is not retained. With an `opener`, as a window that its page
/// opened. Without a display there is no page.
- (id)initWithView:(WebView *)view opener:(WebViewEngine *)opener;

/// Ends the page. Nothing calls the view any more.
- (void)close;

/// Null without a display, and once closed.
- (vireonix::platform::WebPage *)page;

/// Lets the page follow its view.
- (void)synchronize;

/// The page's picture; nil when there is none.
- (NSBitmapImageRep *)picture;
- (NSCursor *)cursor;

- (WebView *)view;

@end

/// The page's news (WebViewEngine+Delegates.mm).
@interface WebViewEngine (Delegates)
- (void)decide:(const vireonix::platform::PolicyRequest &)request
      decision:(std::shared_ptr<vireonix::platform::PolicyDecision>)decision;
- (void)loadStepped:(vireonix::platform::LoadStep)step;
- (void)loadFailed:(const vireonix::platform::LoadFailure &)failure;
- (void)titleChanged:(const std::string &)title;
- (void)resource:(uint64_t)resource
         stepped:(vireonix::platform::ResourceStep)step
             url:(const std::string &)url
           error:(const std::string &)error;
- (vireonix::platform::WebPage *)openWindow:(const std::string &)url;
- (void)windowIsReady;
- (void)windowWantsToClose;
@end

/// The page's looks and focus.
@interface WebViewEngine (Page)
- (void)pixelsChanged;
- (void)cursorChanged:(vireonix::platform::PageCursor)cursor;
- (void)focusLeft:(BOOL)forward;
- (void)processEnded;
@end

/// The client that hands a page's calls to `engine`, which is not retained. No Objective-C
/// exception leaves it: its callers are C.
std::unique_ptr<vireonix::platform::WebPageClient> makeWebPageClient(WebViewEngine *engine);
