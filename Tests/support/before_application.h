// What a test program does before its application object is made.
#pragma once

namespace vireonix::test {

/// Called first by the test programs' entry point. A program that needs it defines it.
[[gnu::weak]] void beforeApplication();

} // namespace vireonix::test
