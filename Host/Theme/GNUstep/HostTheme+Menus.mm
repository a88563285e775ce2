// Menus, the lists of pop-up buttons included.
#import "Theme/GNUstep/Palette.h"
#import "Theme/GNUstep/Shapes.h"
#import "Theme/GNUstep/ThemeClass.h"

using namespace vireonix::host;

@interface HostTheme (Menus)
@end

@implementation HostTheme (Menus)

- (NSColor *)menuBackgroundColor {
  return colour(Ink::menu);
}

- (NSColor *)menuItemBackgroundColor {
  return colour(Ink::menu);
}

- (NSColor *)menuBorderColor {
  return colour(Ink::border);
}

- (NSColor *)menuBorderColorForEdge:(NSRectEdge)edge isHorizontal:(BOOL)horizontal {
  return colour(Ink::border);
}

- (NSColor *)menuSeparatorColor {
  return colour(Ink::subtleBorder);
}

- (CGFloat)menuSeparatorInset {
  return 8;
}

- (BOOL)drawsBorderForMenuItemCell:(NSMenuItemCell *)cell
                             state:(GSThemeControlState)state
                      isHorizontal:(BOOL)horizontal {
  return NO;
}

- (void)drawBorderAndBackgroundForMenuItemCell:(NSMenuItemCell *)cell
                                     withFrame:(NSRect)frame
                                        inView:(NSView *)view
                                         state:(GSThemeControlState)state
                                  isHorizontal:(BOOL)isHorizontal {
  const bool selected = state == GSThemeSelectedState || state == GSThemeHighlightedState;
  if (!selected)
    return;
  fillRounded(NSInsetRect(frame, 3, 1), kControlRadius - 1, colour(Ink::accent));
}

@end
