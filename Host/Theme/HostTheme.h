// The look that the host application gives its process: on GNUstep a theme drawn by this code, on
// macOS the system's own.
#pragma once

typedef enum { HostThemeLight, HostThemeDark } HostThemeVariant;

/// Gives the whole process the look, its colours, its fonts and its defaults for menus, scroll bars
/// and the command key. The first call has to come before the application object is made, because
/// the toolkit then reads its fonts; later calls switch between the variants. What the user has set
/// in the defaults wins over the fonts. Does nothing on macOS. Main thread only.
void InstallHostTheme(HostThemeVariant variant);
