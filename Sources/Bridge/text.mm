#import "Bridge/text.h"

#include "Core/utf8.h"

#include <vector>

namespace vireonix::bridge {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isHighSurrogate(char16_t unit) {
  return (unit & 0xFC00) == 0xD800;
}
bool isLowSurrogate(char16_t unit) {
  return (unit & 0xFC00) == 0xDC00;
}

void appendUtf8(std::string &out, char32_t point) {
  auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (point < 0x80) {
    put(point);
  } else if (point < 0x800) {
    put(0xC0 | (point >> 6));
    put(0x80 | (point & 0x3F));
  } else if (point < 0x10000) {
    put(0xE0 | (point >> 12));
    put(0x80 | ((point >> 6) & 0x3F));
    put(0x80 | (point & 0x3F));
  } else {
    put(0xF0 | (point >> 18));
    put(0x80 | ((point >> 12) & 0x3F));
    put(0x80 | ((point >> 6) & 0x3F));
    put(0x80 | (point & 0x3F));
  }
}

// Lone surrogates become replacement characters.
std::string utf8Of(std::u16string_view units) {
  std::string out;
  out.reserve(units.size());
  for (size_t i = 0; i < units.size(); ++i) {
    const char16_t unit = units[i];
    if (isHighSurrogate(unit) && i + 1 < units.size() && isLowSurrogate(units[i + 1])) {
      const auto high = static_cast<char32_t>(unit - 0xD800);
      const auto low = static_cast<char32_t>(units[++i] - 0xDC00);
      appendUtf8(out, 0x10000 + (high << 10) + low);
    } else if (isHighSurrogate(unit) || isLowSurrogate(unit)) {
      appendUtf8(out, kReplacement);
    } else {
      appendUtf8(out, unit);
    }
  }
  return out;
}

NSString *stringOfWellFormed(std::string_view text) {
  NSString *made = [[[NSString alloc] initWithBytes:text.data() length:text.size()
                                           encoding:NSUTF8StringEncoding] autorelease];
  return made != nil ? made : @"";
}

} // namespace

std::u16string utf16(NSString *text) {
  std::vector<unichar> units([text length]);
  if (!units.empty())
    [text getCharacters:units.data() range:NSMakeRange(0, units.size())];
  return {units.begin(), units.end()};
}

std::string utf8(NSString *text) {
  return utf8Of(utf16(text));
}

NSString *string(std::string_view utf8) {
  if (core::isWellFormedUtf8(utf8))
    return stringOfWellFormed(utf8);
  return stringOfWellFormed(core::wellFormedUtf8(utf8));
}

NSString *string(std::u16string_view utf16) {
  return stringOfWellFormed(utf8Of(utf16));
}

std::string path(NSString *path) {
  if (path == nil)
    return {};
  @try {
    const char *bytes = [path fileSystemRepresentation];
    return bytes != nullptr ? bytes : "";
  } @catch (NSException *) {
    return {};
  }
}

NSString *pathString(std::string_view bytes) {
  NSString *made = [[NSFileManager defaultManager] stringWithFileSystemRepresentation:bytes.data()
                                                                               length:bytes.size()];
  return made != nil ? made : string(bytes);
}

} // namespace vireonix::bridge
