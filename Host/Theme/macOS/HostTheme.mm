#import "Theme/HostTheme.h"

void InstallHostTheme(HostThemeVariant) {}
