#import "Locale.h"

namespace {

NSString *_defaultLanguageCode = nil;
NSString *_defaultBundlePath = nil;
NSDictionary *appLocaleTableDict = nil;

NSString *const kTableName = @"PluginLocale";

void replaceWithCopy(NSString *&stored, NSString *text) {
  NSString *old = stored;
  stored = [text copy];
  [old release];
}

// A fresh object for each lookup; nil without a bundle path.
NSBundle *pluginBundle() {
  return _defaultBundlePath != nil ? [NSBundle bundleWithPath:_defaultBundlePath] : nil;
}

NSDictionary *tableOfBundle(NSBundle *bundle) {
  NSString *path = [bundle pathForResource:kTableName ofType:@"strings" inDirectory:nil
                           forLocalization:_defaultLanguageCode];
  return path != nil ? [NSDictionary dictionaryWithContentsOfFile:path] : nil;
}

bool isTranslation(NSString *text, NSString *key) {
  return [text isKindOfClass:[NSString class]] && ![text isEqualToString:key];
}

} // namespace

void setDefaultLanguageCode(NSString *code) {
  replaceWithCopy(_defaultLanguageCode, code);
}
NSString *defaultLanguageCode(void) {
  return _defaultLanguageCode;
}

void setDefaultBundlePath(NSString *path) {
  replaceWithCopy(_defaultBundlePath, path);
}
NSString *defaultBundlePath(void) {
  return _defaultBundlePath;
}

NSString *loadAppString(NSString *key, NSString *defaultString) {
  NSBundle *bundle = pluginBundle();
  if ([appLocaleTableDict count] == 0) {
    NSDictionary *loaded = tableOfBundle(bundle);
    [appLocaleTableDict release];
    appLocaleTableDict = [loaded retain];
  }
  NSString *found = nil;
  if ([appLocaleTableDict count] > 0)
    found = [appLocaleTableDict objectForKey:key];
  else
    found = [bundle localizedStringForKey:key value:defaultString table:kTableName];
  return isTranslation(found, key) ? found : defaultString;
}
