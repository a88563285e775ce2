#import "Theme/HostTheme.h"

#import "Theme/GNUstep/Defaults.h"
#import "Theme/GNUstep/Palette.h"
#import "Theme/GNUstep/Replacement.h"
#import "Theme/GNUstep/Shapes.h"
#import "Theme/GNUstep/ThemeClass.h"

using namespace vireonix::host;

namespace vireonix::host {

bool hasKeyboardFocus(NSCell *cell, NSView *view) {
  NSResponder *first = [[view window] firstResponder];
  if (first == nil || ![[view window] isKeyWindow])
    return false;
  if ([first isKindOfClass:[NSText class]]) {
    NSText *editor = static_cast<NSText *>(first);
    return [editor isFieldEditor] && static_cast<id>([editor delegate]) == view;
  }
  if (first != view)
    return false;
  return ![view isKindOfClass:[NSMatrix class]] || [static_cast<NSMatrix *>(view) keyCell] == cell;
}

} // namespace vireonix::host

@interface HostTheme ()
- (void)observe;
@end

@implementation HostTheme

- (NSString *)name {
  return @"Host";
}

- (NSColorList *)colors {
  return systemColours();
}

// The control that the keyboard acts on shows that only in the key window.
- (void)keyWindowChanged:(NSNotification *)notification {
  NSResponder *first = [static_cast<NSWindow *>([notification object]) firstResponder];
  if ([first isKindOfClass:[NSText class]] && [static_cast<NSText *>(first) isFieldEditor])
    first = static_cast<NSResponder *>([static_cast<NSText *>(first) delegate]);
  if ([first isKindOfClass:[NSView class]])
    [static_cast<NSView *>(first) setNeedsDisplay:YES];
}

- (void)observe {
  NSNotificationCenter *center = [NSNotificationCenter defaultCenter];
  for (NSString *name in @[ NSWindowDidBecomeKeyNotification, NSWindowDidResignKeyNotification ])
    [center addObserver:self selector:@selector(keyWindowChanged:) name:name object:nil];
}

// The colours that the toolkit asks for by these names only.
- (NSColor *)colorNamed:(NSString *)name state:(GSThemeControlState)state {
  if ([name isEqualToString:@"highlightedTableRowBackgroundColor"])
    return colour(Ink::accent);
  if ([name isEqualToString:@"highlightedTableRowTextColor"])
    return colour(Ink::accentText);
  if ([name isEqualToString:@"browserHeaderTextColor"])
    return colour(Ink::secondaryText);
  if ([name isEqualToString:@"windowBorderColor"])
    return colour(Ink::border);
  if ([name isEqualToString:@"toolbarBorderColor"])
    return colour(Ink::subtleBorder);
  return [super colorNamed:name state:state];
}

@end

void InstallHostTheme(HostThemeVariant variant) {
  static HostTheme *theme = nil;
  usePalette(variant);
  if (theme == nil) {
    registerThemeDefaults();
    chooseFallbackFonts();
    replaceButtonMethods();
    replaceFieldMethods();
    replaceScrollerMethods();
    replaceTableMethods();
    replaceAlertMethods();
    theme = [[HostTheme alloc] initWithBundle:nil];
    [theme observe];
    [GSTheme setTheme:theme];
  } else {
    [theme deactivate];
    [theme activate];
  }
}
