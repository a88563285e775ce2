#import "NSWindowController+SelectedLanguage.h"

#import "Locale.h"

// The first existing file of the language's, the English and the unlocalised nib; nil when there is
// none.
static NSString *pathOfLocalisedNib(NSString *resourceFolder, NSString *name) {
  NSString *code = defaultLanguageCode() != nil ? defaultLanguageCode() : @"en";
  NSString *languageFolder = [NSString stringWithFormat:@"%@.lproj", code];
  NSString *file = [NSString stringWithFormat:@"%@.nib", name];
  NSArray *candidates = @[
    [languageFolder stringByAppendingPathComponent:file],
    [NSString stringWithFormat:@"en.lproj/%@", file], file
  ];
  for (NSString *candidate in candidates) {
    NSString *path = [resourceFolder stringByAppendingPathComponent:candidate];
    if (path != nil && [[NSFileManager defaultManager] fileExistsAtPath:path])
      return path;
  }
  return nil;
}

@implementation NSWindowController (SelectedLanguage)

- (id)initWithResourceNibName:(NSString *)name {
  NSString *bundlePath = defaultBundlePath();
  NSBundle *bundle = bundlePath != nil ? [NSBundle bundleWithPath:bundlePath] : nil;
  NSString *path = pathOfLocalisedNib([bundle resourcePath], name);
  if (path == nil)
    return [self initWithWindowNibName:name];
  return [self initWithWindowNibPath:path owner:self];
}

@end

@implementation NSNib (SelectedLanguage)

- (id)initWithResourceNibName:(NSString *)name bundle:(NSBundle *)bundle {
  NSBundle *home = bundle != nil ? bundle : [NSBundle mainBundle];
  NSString *path = pathOfLocalisedNib([home resourcePath], name);
  if (path == nil)
    return [self initWithNibNamed:name bundle:home];
  NSData *bytes = [NSData dataWithContentsOfFile:path];
  return [self initWithNibData:bytes bundle:home];
}

@end
