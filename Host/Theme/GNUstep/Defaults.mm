#import "Theme/GNUstep/Defaults.h"

#import <AppKit/AppKit.h>

namespace vireonix::host {
namespace {

NSString *const kRegular = @"Inter-Regular";
NSString *const kBold = @"Inter-SemiBold";
NSString *const kFixedPitch = @"DejaVuSansMono";

} // namespace

void registerThemeDefaults() {
  NSMutableDictionary *defaults = [NSMutableDictionary dictionary];
  for (NSString *key in @[
         @"NSFont", @"NSUserFont", @"NSControlContentFont", @"NSLabelFont", @"NSMenuFont",
         @"NSMenuBarFont", @"NSMessageFont", @"NSPaletteFont", @"NSToolTipsFont"
       ])
    [defaults setObject:kRegular forKey:key];
  for (NSString *key in @[ @"NSBoldFont", @"NSTitleBarFont" ])
    [defaults setObject:kBold forKey:key];
  [defaults addEntriesFromDictionary:@{
    @"NSUserFixedPitchFont" : kFixedPitch,
    @"NSFontSize" : @"13",
    @"NSUserFontSize" : @"13",
    @"NSLabelFontSize" : @"12",
    @"NSSmallFontSize" : @"11",
    @"NSToolTipsFontSize" : @"12",
    @"NSScrollViewInterfaceStyle" : @"NSMacintoshInterfaceStyle",
    @"NSScrollerInterfaceStyle" : @"NSMacintoshInterfaceStyle",
    @"NSMenuInterfaceStyle" : @"NSWindows95InterfaceStyle",
    @"GSScrollerDefaultWidth" : @"12",
    @"GSScrollViewNoInnerBorder" : @"YES",
    @"GSScrollViewUseBottomCorner" : @"NO",
    @"GSMenuItemHeight" : @"26",
    @"GSMenuBarHeight" : @"28",
    @"GSMenuSeparatorHeight" : @"26",
    @"GSBrowserUseBezels" : @"NO",
    // Control is what the desktop's users press for commands.
    @"GSFirstCommandKey" : @"Control_L",
    @"GSSecondCommandKey" : @"Control_R",
    @"GSFirstControlKey" : @"VoidSymbol",
    @"GSSecondControlKey" : @"VoidSymbol",
    @"GSFirstAlternateKey" : @"Alt_L",
    @"GSSecondAlternateKey" : @"Alt_R",
    @"GSSuppressAppIcon" : @"YES",
    @"GSAppOwnsMiniwindow" : @"NO",
  }];
  [[NSUserDefaults standardUserDefaults] registerDefaults:defaults];
}

void chooseFallbackFonts() {
  [NSFont setPreferredFontNames:@[
    @"DejaVuSans", @"NotoSansCJKsc-Regular", @"NotoSansThai-Regular", @"NotoSansDevanagari-Regular",
    @"NotoSans-Regular"
  ]];
}

} // namespace vireonix::host
