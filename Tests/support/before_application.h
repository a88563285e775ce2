// What a test program does before its application object is made.
#pragma once

namespace vireonix::test {

/// Called first by the test programs' entry point. A program that needs it defines it.
[[gnu::weak]] void beforeApplication();

/// Called before everything else; defined where the leak check is built in.
[[gnu::weak]] void beforeLeakCheck();

} // namespace vireonix::test
