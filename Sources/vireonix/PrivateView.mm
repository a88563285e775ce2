#import "vireonix/PrivateView.h"

namespace {

constexpr CGFloat kCornerRadius = 4;

} // namespace

@implementation PrivateView

@synthesize workSpace;
@synthesize ower;
@synthesize bundlePath;
@synthesize tableView;
@synthesize tbContent;
@synthesize btnAdd;
@synthesize btnRemove;
@synthesize btnSave;
@synthesize btnBrowse;
@synthesize txtFileName;
@synthesize btnContentAdd;
@synthesize btnContentRemove;
@synthesize btnContentSave;
@synthesize txtCaption;
@synthesize comAlign;
@synthesize comTextAlign;
@synthesize txtInTime;
@synthesize comTextAnimation;
@synthesize txtStayTime;
@synthesize comStartDirection;
@synthesize btnTextColor;
@synthesize txtTextSize;
@synthesize comStyle;

- (void)dealloc {
  [workSpace release];
  [bundlePath release];
  [AlignShortCut release];
  [super dealloc];
}

- (void)drawRect:(NSRect)rect {
  if (!NSEqualSizes(rect.size, [self frame].size)) {
    [super drawRect:rect];
    return;
  }
  NSBezierPath *border = [NSBezierPath bezierPathWithRoundedRect:rect xRadius:kCornerRadius
                                                         yRadius:kCornerRadius];
  [border setLineWidth:1];
  [[NSColor grayColor] set];
  [border stroke];
}

- (void)loadDispInfo {
  AlignShortCut = [@[ @"TL", @"TC", @"TR", @"CL", @"C", @"CR", @"BL", @"BC", @"BR" ] retain];
}

- (IBAction)onSave:(id)sender {
}

@end
