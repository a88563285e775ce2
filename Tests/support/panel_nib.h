// The content editor from a bundle's nib.
#pragma once

#import "vireonix/PrivateView.h"

namespace vireonix::test {

/// The panel of the nib "PrivateView" that the bundle has for the default language, autoreleased;
/// nil when it holds none.
PrivateView *panelOfNib(NSBundle *bundle);

} // namespace vireonix::test
