#import "Bridge/text.h"

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

// Bytes in the well-formed UTF-8 sequence at the start of `text` (The Unicode Standard, table 3-7);
// 0 when there is none.
size_t sequenceLength(std::string_view text) {
  auto byte = [&text](size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
  };
  auto within = [](unsigned b, unsigned low, unsigned high) { return b >= low && b <= high; };
  const unsigned first = byte(0);
  if (first < 0x80)
    return 1;
  if (within(first, 0xC2, 0xDF))
    return within(byte(1), 0x80, 0xBF) ? 2 : 0;
  if (within(first, 0xE0, 0xEF)) {
    const unsigned low = first == 0xE0 ? 0xA0 : 0x80;
    const unsigned high = first == 0xED ? 0x9F : 0xBF;
    return within(byte(1), low, high) && within(byte(2), 0x80, 0xBF) ? 3 : 0;
  }
  if (within(first, 0xF0, 0xF4)) {
    const unsigned low = first == 0xF0 ? 0x90 : 0x80;
    const unsigned high = first == 0xF4 ? 0x8F : 0xBF;
    return within(byte(1), low, high) && within(byte(2), 0x80, 0xBF) && within(byte(3), 0x80, 0xBF)
               ? 4
               : 0;
  }
  return 0;
}

std::string wellFormed(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const size_t length = sequenceLength(text);
    if (length == 0)
      appendUtf8(out, kReplacement);
    else
      out.append(text.substr(0, length));
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return out;
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
  return stringOfWellFormed(wellFormed(utf8));
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
