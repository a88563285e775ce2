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

namespace {

// The view that shows the focus of a responder: for a field editor, its field.
NSView *focusedView(NSResponder *first) {
  id view = first;
  if ([first isKindOfClass:[NSText class]] && [static_cast<NSText *>(first) isFieldEditor])
    view = [static_cast<NSText *>(first) delegate];
  return [view isKindOfClass:[NSView class]] ? view : nil;
}

void redrawRing(NSView *view) {
  [view setNeedsDisplay:YES];
  NSScrollView *around = [view enclosingScrollView];
  if ([around documentView] == view)
    [around setNeedsDisplay:YES];
}

// The toolkit redraws less than the ring covers.
Replacement<BOOL, NSResponder *> makeFirstResponder;
BOOL makeFirstResponderAndShowIt(id receiver, SEL, NSResponder *responder) {
  NSWindow *window = receiver;
  NSView *before = [focusedView([window firstResponder]) retain];
  const BOOL changed = makeFirstResponder(window, responder);
  NSView *after = focusedView([window firstResponder]);
  if (before != after)
    redrawRing(before);
  redrawRing(after);
  [before release];
  return changed;
}

} // namespace

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
// A window is first on the display for certain when it becomes the key window.
- (void)keyWindowChanged:(NSNotification *)notification {
  NSWindow *window = [notification object];
  redrawRing(focusedView([window firstResponder]));
  if ([window isKeyWindow])
    showApplicationIcon(window);
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
    makeFirstResponder.install([NSWindow class], @selector(makeFirstResponder:),
                               &makeFirstResponderAndShowIt);
    replaceButtonMethods();
    replaceFieldMethods();
    replaceScrollerMethods();
    replaceTableMethods();
    replaceAlertMethods();
    replaceComboMethods();
    replaceTitleMethods();
    replaceWindowMethods();
    theme = [[HostTheme alloc] initWithBundle:nil];
    [theme observe];
    [GSTheme setTheme:theme];
    // Whenever any default changes, GNUstep goes back to the theme that the defaults name.
    [[NSNotificationCenter defaultCenter] removeObserver:[GSTheme class]
                                                    name:NSUserDefaultsDidChangeNotification
                                                  object:nil];
  } else {
    [theme deactivate];
    [theme activate];
  }
}
