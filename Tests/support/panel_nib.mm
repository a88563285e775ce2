#import "support/panel_nib.h"

#import "NSWindowController+SelectedLanguage.h"

namespace vireonix::test {

PrivateView *panelOfNib(NSBundle *bundle) {
  NSNib *nib = [[[NSNib alloc] initWithResourceNibName:@"PrivateView" bundle:bundle] autorelease];
  PrivateView *owner = [[[PrivateView alloc] init] autorelease];
  NSArray *objects = nil;
  [nib instantiateNibWithOwner:owner topLevelObjects:&objects];
  PrivateView *panel = nil;
  for (id object in objects) {
    // Each carries one reference too many.
    [object autorelease];
    if ([object isKindOfClass:[PrivateView class]])
      panel = object;
  }
  return panel;
}

} // namespace vireonix::test
