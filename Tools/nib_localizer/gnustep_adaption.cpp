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

void adapt(xmlNode* element) {
  const std::string_view name = nameOf(element);
  if (name == "font")
    giveFontItsSize(element);
  if (name.ends_with("Cell"))
    sayWhetherEditable(element);
  if (name == "sliderCell")
    giveSliderItsValue(element);
  if (name == "comboBox")
    trimComboBox(element);
}

} // namespace

void XibDocument::adaptToGnustep() {
  forEachElement(xmlDocGetRootElement(document_.get()), adapt);
}

} // namespace vireonix::nibs
