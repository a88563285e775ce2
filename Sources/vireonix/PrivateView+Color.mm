#import "vireonix/PrivateView.h"

#import "Platform/desktop.h"
#import "vireonix/ColorPanelDelegate.h"
#import "vireonix/PrivateView+SetUp.h"
#import "vireonix/panel_controls.h"
#import "vireonix/slider_records.h"

using namespace vireonix;

namespace slider = vireonix::core::slider;

// How long the application must have been left, in seconds: the focus is nowhere for a moment while
// it goes from one of its windows to another.
static const NSTimeInterval kLeftFor = 0.2;

namespace {

// Keeps the colour panel open until its delegate has seen it close. Waiting for the next event
// leaves the processor alone between turns.
void runUntilClosed(NSColorPanel *panel, ColorPanelDelegate *delegate) {
  constexpr NSTimeInterval kTurn = 0.1;
  platform::prepareForModalSession(panel);
  NSModalSession session = [NSApp beginModalSessionForWindow:panel];
  while (![delegate isClosed]) {
    @autoreleasepool {
      [NSApp runModalSession:session];
      if (![delegate isClosed])
        [NSApp nextEventMatchingMask:NSAnyEventMask
                           untilDate:[NSDate dateWithTimeIntervalSinceNow:kTurn]
                              inMode:NSModalPanelRunLoopMode
                             dequeue:NO];
    }
  }
  [NSApp endModalSession:session];
}

} // namespace

@implementation PrivateView (Color)

- (IBAction)onColorSelect:(id)sender {
  if (isInColorSession)
    return;
  // A host may let go of the panel as soon as its window closes.
  [self retain];
  @autoreleasepool {
    isInColorSession = YES;
    [self beginColorChoiceOfButton:sender];
    ColorPanelDelegate *delegate = [[colorPanelDelegate retain] autorelease];
    runUntilClosed([NSColorPanel sharedColorPanel], delegate);
    isInColorSession = NO;
    [self endColorChoice];
    [self endSessionBelow];
  }
  [self release];
}

- (BOOL)endSessionAfterColorChoice:(NSInteger)code {
  if (!isInColorSession)
    return NO;
  codeForSessionBelow = [[NSNumber alloc] initWithInteger:code];
  return YES;
}

- (void)endSessionBelow {
  if (codeForSessionBelow == nil)
    return;
  platform::stopModalSession([codeForSessionBelow integerValue]);
  [codeForSessionBelow release];
  codeForSessionBelow = nil;
}

- (void)beginColorChoiceOfButton:(NSButton *)button {
  // The colour panel tells each colour to the view that has the keyboard. A field that is being
  // edited would take that for typing, and ask about a number out of range.
  [[self window] makeFirstResponder:button];
  NSColorPanel *panel = [NSColorPanel sharedColorPanel];
  NSColor *color = [[button cell] backgroundColor];
  [panel setColor:color != nil ? color : [NSColor blackColor]];
  colorButton = [button retain];
  colorPanelDelegate = [[ColorPanelDelegate alloc] init];
  [panel setDelegate:colorPanelDelegate];
  NSNotificationCenter *center = [NSNotificationCenter defaultCenter];
  [center addObserver:self selector:@selector(applicationDidResignActive:)
                 name:NSApplicationDidResignActiveNotification
               object:NSApp];
  [center addObserver:self selector:@selector(applicationWillTerminate:)
                 name:NSApplicationWillTerminateNotification
               object:NSApp];
}

- (void)applicationDidResignActive:(NSNotification *)notification {
  [self performSelector:@selector(endColorChoiceIfLeft) withObject:nil afterDelay:kLeftFor
                inModes:@[ NSModalPanelRunLoopMode ]];
}

- (void)endColorChoiceIfLeft {
  if (![NSApp isActive])
    [self endColorChoice];
}

- (void)applicationWillTerminate:(NSNotification *)notification {
  [self endColorChoice];
}

- (void)endColorChoice {
  if (colorPanelDelegate == nil)
    return;
  NSColorPanel *panel = [NSColorPanel sharedColorPanel];
  if (![colorPanelDelegate isClosed])
    [panel close];
  [panel setDelegate:nil];
  [self forgetColorChoice];
  [[colorButton cell] setBackgroundColor:[panel color]];
  [colorButton setNeedsDisplay:YES];
  [colorButton autorelease];
  colorButton = nil;
  [self storeChosenColor];
}

- (void)forgetColorChoice {
  NSNotificationCenter *center = [NSNotificationCenter defaultCenter];
  [center removeObserver:self name:NSApplicationDidResignActiveNotification object:NSApp];
  [center removeObserver:self name:NSApplicationWillTerminateNotification object:NSApp];
  [NSObject cancelPreviousPerformRequestsWithTarget:self selector:@selector(endColorChoiceIfLeft)
                                             object:nil];
  [colorPanelDelegate autorelease];
  colorPanelDelegate = nil;
}

- (void)storeChosenColor {
  NSMutableDictionary *record = [self selectedTextObject];
  if (record == nil)
    return;
  setRecordText(record, slider::kColor, colorTextOfButton(btnTextColor));
  [self onSave:nil];
}

@end
