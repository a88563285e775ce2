#import "support/position_window.h"

#import "Bridge/text.h"
#import "support/mouse.h"
#import "support/run_loop.h"

#include "Core/position.h"

static std::atomic<bool> controllerGone;
static std::atomic<bool> freedOnTheMainThread;

// Notes where it is freed.
@interface WatchedController : PluginSettingsDelegate
@end

@implementation WatchedController
- (void)dealloc {
  freedOnTheMainThread = [NSThread isMainThread];
  controllerGone = true;
  [super dealloc];
}
@end

namespace vireonix::test {

PositionWindow::PositionWindow() {
  controllerGone = false;
  freedOnTheMainThread = false;
  window = [[NSWindow alloc] initWithContentRect:NSMakeRect(200, 300, 400, 260)
                                       styleMask:NSTitledWindowMask
                                         backing:NSBackingStoreBuffered
                                           defer:NO];
  [window setReleasedWhenClosed:NO];
  controller = [[WatchedController alloc] initWithWindow:window];
  [controller initialParaments];
  placeholder = [[NSView alloc] initWithFrame:NSMakeRect(20, 20, 200, 100)];
  [[window contentView] addSubview:placeholder];
  [controller setPositionDrawView:placeholder];
  [controller setTxtLeft:left = addField(220)];
  [controller setTxtTop:top = addField(190)];
  [controller setTxtRight:right = addField(160)];
  [controller setTxtBottom:bottom = addField(130)];
  [controller setTxtTransparency:transparency = addField(100)];
  slider = [[[NSSlider alloc] initWithFrame:NSMakeRect(240, 70, 120, 20)] autorelease];
  [slider setMaxValue:100];
  [[window contentView] addSubview:slider];
  [controller setSldTrans:slider];
  addLayers();
}

PositionWindow::PositionWindow(const core::Position &start) : PositionWindow() {
  load(core::positionText(start));
  [window makeKeyAndOrderFront:nil];
  pumpEventsUntil([this] { return bool([window isKeyWindow]); });
  [window display];
}

PositionWindow::~PositionWindow() {
  releaseController();
  [placeholder release];
  [window orderOut:nil];
  [window release];
}

NSTextField *PositionWindow::addField(CGFloat y) {
  NSTextField *field =
      [[[NSTextField alloc] initWithFrame:NSMakeRect(240, y, 120, 22)] autorelease];
  [field setDelegate:static_cast<id>(controller)];
  [[window contentView] addSubview:field];
  return field;
}

void PositionWindow::addLayers() {
  NSButtonCell *prototype = [[[NSButtonCell alloc] init] autorelease];
  [prototype setButtonType:NSRadioButton];
  layers = [[[NSMatrix alloc] initWithFrame:NSMakeRect(240, 10, 120, 54) mode:NSRadioModeMatrix
                                  prototype:prototype
                               numberOfRows:3
                            numberOfColumns:1] autorelease];
  for (NSInteger row = 0; row < 3; ++row)
    [[layers cellAtRow:row column:0] setTag:row];
  [[window contentView] addSubview:layers];
  [controller setMatLayer:layers];
}

void PositionWindow::load(std::string_view bytes) {
  [controller loadSettingsFromFile:bridge::pathString(folder.write("loaded.dat", bytes))];
}

void PositionWindow::useWorkspace() {
  std::filesystem::create_directories(folder.at("workspace"));
  [controller setWorkSpace:bridge::pathString(folder.at("workspace"))];
}

std::string PositionWindow::text(NSTextField *field) {
  NSText *editor = [field currentEditor];
  return bridge::utf8(editor != nil ? [editor string] : [field stringValue]);
}

std::string PositionWindow::texts() const {
  return text(left) + ' ' + text(top) + ' ' + text(right) + ' ' + text(bottom) + ' ' +
         text(transparency);
}

void PositionWindow::edit(NSTextField *field) {
  [window makeFirstResponder:field];
  [field selectText:nil];
}

void PositionWindow::type(NSString *text) {
  if ([text length] == 0)
    [static_cast<NSTextView *>([window firstResponder]) deleteBackward:nil];
  for (NSUInteger i = 0; i < [text length]; ++i)
    insert([text substringWithRange:NSMakeRange(i, 1)]);
}

void PositionWindow::insert(NSString *text) {
  [static_cast<NSTextView *>([window firstResponder]) insertText:text];
}

void PositionWindow::notifyOf(id control) {
  [controller
      controlTextDidChange:[NSNotification notificationWithName:NSControlTextDidChangeNotification
                                                         object:control]];
}

void PositionWindow::drag(NSPoint from, NSPoint to) {
  sendMouse(canvas(), NSLeftMouseDown, from);
  sendMouse(canvas(), NSLeftMouseDragged, to);
  sendMouse(canvas(), NSLeftMouseUp, to);
}

void PositionWindow::releaseController() {
  for (NSTextField *field : {left, top, right, bottom, transparency})
    [field setDelegate:nil];
  [controller release];
  controller = nil;
}

bool PositionWindow::isControllerGone() {
  return controllerGone;
}

bool PositionWindow::wasControllerFreedOnTheMainThread() {
  return freedOnTheMainThread;
}

} // namespace vireonix::test
