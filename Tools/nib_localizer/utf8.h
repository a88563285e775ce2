// The little of UTF-8 that the tool needs.
#pragma once

#include <string>
#include <string_view>

namespace vireonix::nibs {

/// Whether the number names a character: at most 0x10FFFF and no surrogate.
bool isCodePoint(unsigned code);

/// Appends the UTF-8 of a code point for which `isCodePoint` holds.
void appendUtf8(std::string& text, unsigned code);

/// Whether the bytes are well-formed UTF-8.
bool isValidUtf8(std::string_view bytes);

} // namespace vireonix::nibs
