// Tells the colour choice that the shared colour panel has closed. Serves one choice. Main thread
// only.
#import <AppKit/AppKit.h>

@interface ColorPanelDelegate : NSObject <NSWindowDelegate> {
  BOOL m_bIsClosed;
}

- (instancetype)init;
/// Notes that the panel has closed and ends the application's modal loop.
- (void)windowWillClose:(NSNotification *)notification;
/// Whether the panel has been closed.
- (BOOL)isClosed;

@end
