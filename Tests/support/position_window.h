// The position editor in a window of its own: a real controller with its outlets set by hand.
#pragma once

#import "Class/ObjectView.h"
#import "Class/PluginSettingsDelegate.h"
#import "Class/PositionRect.h"
#import "Class/PositionView.h"
#import "support/temporary_folder.h"

#include <atomic>
#include <string>
#include <string_view>

namespace vireonix::test {

class PositionWindow {
public:
  /// Nothing is loaded yet: there is no canvas.
  PositionWindow();
  /// Loads a record, and shows the window as the key one.
  explicit PositionWindow(const core::Position &start);
  ~PositionWindow();
  PositionWindow(const PositionWindow &) = delete;
  PositionWindow &operator=(const PositionWindow &) = delete;

  /// Loads a position file of these bytes.
  void load(std::string_view bytes);
  /// Gives the controller an empty workspace folder.
  void useWorkspace();
  /// The bytes of the workspace's position file.
  [[nodiscard]] std::string settings() const {
    return fileBytes(folder.at("workspace/settings.dat"));
  }

  [[nodiscard]] PositionView *canvas() const { return [controller valueForKey:@"positionView"]; }
  [[nodiscard]] ObjectView *box() const { return [canvas() valueForKey:@"objectView"]; }
  [[nodiscard]] PositionRect *record() const { return [controller valueForKey:@"ptRect"]; }
  [[nodiscard]] core::Position position() const { return [record() position]; }
  /// What a field shows, while it is being edited too.
  [[nodiscard]] static std::string text(NSTextField *field);
  /// What the five fields show.
  [[nodiscard]] std::string texts() const;

  /// Starts editing a field, all of its text selected.
  void edit(NSTextField *field);
  /// Types into the field that is being edited, character by character; "" deletes the selection.
  void type(NSString *text);
  /// Puts the text into the field that is being edited at once.
  void insert(NSString *text);
  /// Tells the controller that a control's text has changed.
  void notifyOf(id control);
  /// A whole gesture of one drag step between two points of the canvas.
  void drag(NSPoint from, NSPoint to);

  /// Lets go of the controller before the end.
  void releaseController();
  [[nodiscard]] static bool isControllerGone();
  [[nodiscard]] static bool wasControllerFreedOnTheMainThread();

  TemporaryFolder folder;
  PluginSettingsDelegate *controller = nil;
  NSWindow *window = nil;
  NSView *placeholder = nil;
  NSTextField *left = nil;
  NSTextField *top = nil;
  NSTextField *right = nil;
  NSTextField *bottom = nil;
  NSTextField *transparency = nil;
  NSSlider *slider = nil;
  NSMatrix *layers = nil;

private:
  NSTextField *addField(CGFloat y);
  void addLayers();
};

} // namespace vireonix::test
