// Which sanitizer a test program is built with.
#pragma once

namespace vireonix::test {

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VIREONIX_SANITIZED 1
#endif
#endif

/// How many rounds a long test makes: an eighth under a sanitizer, where each takes many times as
/// long.
constexpr int rounds(int usually) {
#ifdef VIREONIX_SANITIZED
  return usually / 8;
#else
  return usually;
#endif
}

} // namespace vireonix::test
