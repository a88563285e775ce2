// What the plug-in asks of the desktop it runs on. Main thread only.
#pragma once

#import <Foundation/Foundation.h>

@class NSTableView;
@class NSWindow;

namespace vireonix::platform {

/// Opens an address in the user's default application for it and answers at once. Failures are
/// ignored.
void openWithDefaultApplication(NSURL *address);

/// Ends the application's modal session with `code`; does nothing when there is none.
void stopModalSession(NSInteger code);

/// Called before a modal session for a panel that is used again and again.
void prepareForModalSession(NSWindow *panel);

/// Called before a window is shown, so that the application's first click is as good as any.
void prepareForFirstClick();

/// Solid lines between the table's columns and between its rows.
void showSolidGrid(NSTableView *table);

/// Gives back what the nib calls retained too often: `objects` are the top-level objects of an
/// instantiated nib, and the caller has retained those it keeps.
void releaseTopLevelObjects(NSArray *objects);

} // namespace vireonix::platform
