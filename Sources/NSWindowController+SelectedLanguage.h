// Finds a nib in the folder of the user's language, then in English, then unlocalised, then by the
// platform's own lookup.
#import <AppKit/AppKit.h>

@interface NSWindowController (SelectedLanguage)
/// Initialises from the nib of that name (no extension) in the bundle at the default bundle path.
- (id)initWithResourceNibName:(NSString *)name;
@end

@interface NSNib (SelectedLanguage)
/// Initialises from the nib of that name (no extension) in `bundle`, or in the main bundle for nil.
- (id)initWithResourceNibName:(NSString *)name bundle:(NSBundle *)bundle;
@end
