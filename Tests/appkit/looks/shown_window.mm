#import "appkit/looks/shown_window.h"

#import "Theme/HostTheme.h"
#import "support/before_application.h"
#import "support/mouse.h"
#import "support/run_loop.h"

#include <cstdlib>
#include <stdexcept>

void vireonix::test::beforeApplication() {
  InstallHostTheme(HostThemeLight);
}

namespace vireonix::test {
namespace {

NSArray *controllerControls() {
  return @[
    @"iWebView", @"txtLeft", @"txtTop", @"txtRight", @"txtBottom", @"sldTrans", @"txtTransparency",
    @"matLayer", @"btnDefault", @"btnCancel", @"btnOK"
  ];
}

NSArray *panelControls() {
  return @[
    @"tableView",    @"btnAdd",        @"btnRemove",        @"btnSave",
    @"txtFileName",  @"btnBrowse",     @"tbContent",        @"txtCaption",
    @"btnTextColor", @"txtTextSize",   @"comAlign",         @"comTextAlign",
    @"txtInTime",    @"comStyle",      @"comTextAnimation", @"comStartDirection",
    @"txtStayTime",  @"btnContentAdd", @"btnContentSave",   @"btnContentRemove"
  ];
}

void selectFirstRow(NSTableView *table) {
  [table selectRowIndexes:[NSIndexSet indexSetWithIndex:0] byExtendingSelection:NO];
}

// Gives the window the display's keyboard, as a click on its title would.
bool activate(NSWindow *window) {
  const std::string command = "xdotool search --name '^" +
                              std::string([[window title] UTF8String]) +
                              "$' windowactivate >/dev/null 2>&1";
  return pumpEventsUntil([&] {
    return [window isKeyWindow] || (std::system(command.c_str()) == 0 &&
                                    pumpEventsUntil([&] { return [window isKeyWindow]; }, 1));
  });
}

} // namespace

ShownWindow::ShownWindow() {
  [window() setFrameTopLeftPoint:NSMakePoint(100, 1100)];
  [window() makeKeyAndOrderFront:nil];
  [NSApp activateIgnoringOtherApps:YES];
  if (!pumpUntilReachable(window()) || !activate(window()))
    throw std::runtime_error("the window did not come up");
  selectFirstRow([panel() tableView]);
  pumpEventsUntil([this] { return [[panel() tbContent] numberOfRows] > 0; });
  selectFirstRow([panel() tbContent]);
  pumpEventsUntil([this] { return [[[panel() txtCaption] stringValue] length] > 0; });
}

ShownWindow::~ShownWindow() {
  // Without the question that closing the window asks.
  [window() setDelegate:nil];
  [window() close];
}

id ShownWindow::control(NSString *name) const {
  return [controllerControls() containsObject:name] ? session_.field(name)
                                                    : [panel() valueForKey:name];
}

std::string ShownWindow::focused() const {
  id first = [window() firstResponder];
  if ([first isKindOfClass:[NSText class]] && [static_cast<NSText *>(first) isFieldEditor])
    first = [static_cast<NSText *>(first) delegate];
  for (NSString *name in [controllerControls() arrayByAddingObjectsFromArray:panelControls()])
    if (control(name) == first)
      return [name UTF8String];
  return "";
}

void ShownWindow::focus(NSString *name) const {
  [window() makeFirstResponder:control(name)];
  pumpEventsUntil([&] { return focused() == [name UTF8String]; });
}

void pressKeysSoon(const std::string &keys) {
  if (std::system(("(for key in " + keys + "; do sleep 0.4; xdotool key $key; done) &").c_str()) !=
      0)
    throw std::runtime_error("xdotool cannot press " + keys);
}

void pressKey(const std::string &key) {
  if (std::system(("xdotool key " + key).c_str()) != 0)
    throw std::runtime_error("xdotool cannot press " + key);
}

} // namespace vireonix::test
