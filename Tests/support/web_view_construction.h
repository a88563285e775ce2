// The making of WebKit's view in the leak check's stacks.
#pragma once

namespace vireonix::test {

/// Has it run through a function with a name, `constructWebKitWebView`, for
/// Tests/support/lsan.supp. Call once, before the first view.
void nameViewConstruction();

} // namespace vireonix::test
