#import "Class/Log/LogAlert.h"

static NSString *const kReturnKey = @"\r";
static const int kEscapeCharacter = 27;

static NSAlert *alertWithButtons(NSString *title, NSString *text, NSArray *buttonTitles) {
  NSAlert *alert = [[NSAlert alloc] init];
  for (NSString *buttonTitle in buttonTitles)
    [alert addButtonWithTitle:buttonTitle];
  [alert setMessageText:title];
  [alert setInformativeText:text];
  return alert;
}

static NSInteger runAndRelease(NSAlert *alert) {
  const NSInteger answer = [alert runModal];
  [alert release];
  return answer;
}

@implementation LogAlert

+ (void)showMessage:(NSString *)title Text:(NSString *)text {
  runAndRelease(alertWithButtons(title, text, @[ @"OK" ]));
}

+ (BOOL)askYesNo:(NSString *)title Text:(NSString *)text {
  NSAlert *alert = alertWithButtons(title, text, @[ @"YES", @"NO" ]);
  for (NSButton *button in [alert buttons]) {
    if ([[button title] isEqualToString:@"YES"])
      [button setKeyEquivalent:kReturnKey];
    else if ([[button title] isEqualToString:@"NO"])
      [button setKeyEquivalent:[NSString stringWithFormat:@"%c", kEscapeCharacter]];
  }
  return runAndRelease(alert) != NSAlertSecondButtonReturn;
}

+ (BOOL)askOKCancel:(NSString *)title Text:(NSString *)text {
  return runAndRelease(alertWithButtons(title, text, @[ @"OK", @"Cancel" ])) !=
         NSAlertSecondButtonReturn;
}

@end
