// Lets a file "Name.nib" hold an Interface Builder XIB document. GNUstep chooses a loader by the
// file's extension and gives every "nib" to the loader of keyed archives; this loader takes its
// place, recognises XIB documents by their first bytes and passes everything else, such as the
// host's own nibs, on to the loader that it replaced. It registers itself when its image is loaded.
#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSModelLoaderFactory.h>

@interface XibNibLoader : GSModelLoader
@end
