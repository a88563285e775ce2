#include "nib_localizer/utf8.h"

#include <libxml/xmlstring.h>

namespace vireonix::nibs {
namespace {

char byte(unsigned value) {
  return static_cast<char>(static_cast<unsigned char>(value));
}

} // namespace

bool isCodePoint(unsigned code) {
  return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

void appendUtf8(std::string& text, unsigned code) {
  if (code < 0x80) {
    text += byte(code);
    return;
  }
  if (code < 0x800) {
    text += byte(0xC0 | code >> 6);
  } else {
    if (code < 0x10000) {
      text += byte(0xE0 | code >> 12);
    } else {
      text += byte(0xF0 | code >> 18);
      text += byte(0x80 | (code >> 12 & 0x3F));
    }
    text += byte(0x80 | (code >> 6 & 0x3F));
  }
  text += byte(0x80 | (code & 0x3F));
}

bool isValidUtf8(std::string_view bytes) {
  // libxml2 stops at the first NUL, which no text of ours holds.
  const std::string whole(bytes);
  return whole.find('\0') == std::string::npos &&
         xmlCheckUTF8(reinterpret_cast<const unsigned char*>(whole.c_str())) == 1;
}

} // namespace vireonix::nibs
