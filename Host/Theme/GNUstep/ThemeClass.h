// The theme's class. Its categories draw one kind of control each.
#pragma once

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSTheme.h>

@interface HostTheme : GSTheme
@end

namespace vireonix::host {

/// Whether the keyboard acts on the control that shows this cell in this view.
bool hasKeyboardFocus(NSCell *cell, NSView *view);

/// Whether the mouse is over the control that shows this cell in this view.
bool isHovered(NSCell *cell, NSView *view);

/// Whether the mouse is held down on this view, or a list that it opened is open.
bool isHeld(NSView *view);

/// Gives a window that is on the display the application's icon.
void showApplicationIcon(NSWindow *window);

} // namespace vireonix::host
