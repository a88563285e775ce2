// What GNUstep's XIB loader (gui 0.29) needs to hear that AppKit's takes for granted.
#include "nib_localizer/xib_document.h"
#include "nib_localizer/xml_tree.h"

#include <array>
#include <cstdlib>
#include <sstream>
#include <utility>

namespace vireonix::nibs {
namespace {

// Sizes in points of the fonts that a document names by purpose.
constexpr std::array<std::pair<std::string_view, const char*>, 9> kFontSizes = {{
    {"system", "13"},
    {"systemBold", "13"},
    {"smallSystem", "11"},
    {"smallSystemBold", "11"},
    {"miniSystem", "9"},
    {"label", "10"},
    {"message", "13"},
    {"cellTitle", "12"},
    {"menu", "13"},
}};
constexpr const char* kUsualFontSize = "13";

// The loader makes a regular font of every font that is named by a purpose. One with neither name
// nor purpose and with these flags becomes the window titles' font, which is bold.
constexpr const char* kTitleFontFlags = "22";

void keepFontBold(xmlNode* font) {
  if (attribute(font, "metaFont") != "systemBold")
    return;
  removeAttribute(font, "metaFont");
  setAttribute(font, "fFlags", kTitleFontFlags);
}

// Without a size the loader reads a float from nil.
void giveFontItsSize(xmlNode* font) {
  if (attribute(font, "size"))
    return;
  const std::string purpose = attribute(font, "metaFont").value_or("system");
  const char* size = kUsualFontSize;
  for (const auto& [name, points] : kFontSizes) {
    if (name == purpose)
      size = points;
  }
  setAttribute(font, "size", size);
}

// The loader takes a cell that does not say otherwise for an editable one: labels would take the
// keyboard and radio buttons would never send their action.
void sayWhetherEditable(xmlNode* cell) {
  if (!attribute(cell, "editable"))
    setAttribute(cell, "editable", "NO");
}

// The loader reads the value under another name than the one that Interface Builder writes.
void giveSliderItsValue(xmlNode* cell) {
  if (const auto value = attribute(cell, "doubleValue"))
    setAttribute(cell, "value", *value);
}

std::string shifted(const std::optional<std::string>& number, double by) {
  std::ostringstream text;
  text << std::strtod(number.value_or("0").c_str(), nullptr) + by;
  return text.str();
}

// AppKit draws a combo box inside its frame and leaves room for a shadow: 3 points at the right and
// 4 of the height. GNUstep draws the whole frame.
void trimComboBox(xmlNode* comboBox) {
  xmlNode* frame = childWithKey(comboBox, "rect", "frame");
  if (frame == nullptr)
    return;
  setAttribute(frame, "y", shifted(attribute(frame, "y"), 3));
  setAttribute(frame, "width", shifted(attribute(frame, "width"), -3));
  setAttribute(frame, "height", shifted(attribute(frame, "height"), -4));
}

std::string base64(const std::string& bytes) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  unsigned pending = 0;
  int bits = 0;
  for (const char c : bytes) {
    pending = pending << 8 | static_cast<unsigned char>(c);
    for (bits += 8; bits >= 6; bits -= 6)
      text += kDigits[pending >> (bits - 6) & 0x3F];
  }
  if (bits > 0)
    text += kDigits[pending << (6 - bits) & 0x3F];
  return text;
}

// The parser hands on text with a character outside ASCII or an entity in pieces, and the loader
// keeps the last piece. Encoded, the text is in one piece.
void keepTextInOnePiece(xmlNode* string) {
  if (attribute(string, "base64-UTF8"))
    return;
  setText(string, base64(textOf(string)));
  setAttribute(string, "base64-UTF8", "YES");
}

void adapt(xmlNode* element) {
  const std::string_view name = nameOf(element);
  if (name == "font") {
    giveFontItsSize(element);
    keepFontBold(element);
  }
  if (name.ends_with("Cell"))
    sayWhetherEditable(element);
  if (name == "sliderCell")
    giveSliderItsValue(element);
  if (name == "string")
    keepTextInOnePiece(element);
  if (name == "comboBox")
    trimComboBox(element);
}

} // namespace

void XibDocument::adaptToGnustep() {
  forEachElement(xmlDocGetRootElement(document_.get()), adapt);
}

} // namespace vireonix::nibs
