// What a text field holds and shows while the user may be typing in it. Main thread only.
#pragma once

#import <AppKit/AppKit.h>

namespace vireonix {

/// The field's text as it stands, without ending an editing session in it. Never nil.
NSString *textOfField(NSTextField *field);

/// Shows a text (nil as the empty one) without ending an editing session; the insertion point stays
/// where it is as far as the text reaches. Does nothing when the field shows that text already.
void showTextInField(NSTextField *field, NSString *text);

} // namespace vireonix
