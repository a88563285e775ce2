#import "Bridge/text.h"

#include "Core/utf8.h"

#include <cstdint>
#include <vector>

namespace vireonix::bridge {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isHighSurrogate(unichar unit) {
  return (unit & 0xFC00) == 0xD800;
}
bool isLowSurrogate(unichar unit) {
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

NSString *stringOfWellFormed(std::string_view text) {
  NSString *made = [[[NSString alloc] initWithBytes:text.data() length:text.size()
                                           encoding:NSUTF8StringEncoding] autorelease];
  return made != nil ? made : @"";
}

} // namespace

std::string utf8(NSString *text) {
  const NSUInteger length = [text length];
  std::vector<unichar> units(length);
  if (length > 0)
    [text getCharacters:units.data() range:NSMakeRange(0, length)];
  std::string out;
  out.reserve(length);
  for (NSUInteger i = 0; i < length; ++i) {
    const unichar unit = units[i];
    if (isHighSurrogate(unit) && i + 1 < length && isLowSurrogate(units[i + 1])) {
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

NSString *string(std::string_view utf8) {
  return stringOfWellFormed(core::wellFormedUtf8(utf8));
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
