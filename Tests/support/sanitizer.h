// Which sanitizer a test program is built with.
#pragma once

namespace vireonix::test {

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VIREONIX_SANITIZED 1
#endif
#endif

/// Whether the program is built with a sanitizer.
#ifdef VIREONIX_SANITIZED
inline constexpr bool kIsSanitized = true;
#else
inline constexpr bool kIsSanitized = false;
#endif

/// How many rounds a long test makes: an eighth under a sanitizer, where each takes many times as
/// long.
constexpr int rounds(int usually) {
  return kIsSanitized ? usually / 8 : usually;
}

} // namespace vireonix::test
