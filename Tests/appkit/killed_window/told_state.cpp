#include "told_state.h"

#include "core/faults/tree_contents.h"
#include "support/temporary_folder.h"

#include <algorithm>

namespace vireonix::test {

namespace slider = core::slider;

namespace {

// Between the parts of a line; nobody types it.
constexpr char kSeparator = '\t';

std::string captionText(const slider::TextObject& caption) {
  std::string text;
  for (const std::string_view key : captionKeys())
    text += std::string(key) + "=" + std::string(caption.find(key).value_or("(none)")) + "; ";
  return text;
}

std::string documentIn(const std::string& workspace) {
  const core::xml::Tree root =
      core::xml::parse(fileBytes(workspace + "/" + kDocumentFile), core::xml::Mode::Strict);
  if (!root)
    return "";
  const slider::Document document = slider::readDocument(*root);
  return document.slides ? documentText(headText(*root), *document.slides) : "";
}

} // namespace

const std::vector<std::string_view>& captionKeys() {
  static const std::vector<std::string_view> keys = {
      slider::kText,          slider::kSize,          slider::kColor,    slider::kStyle,
      slider::kAlign,         slider::kInTime,        slider::kStayTime, slider::kTextAlign,
      slider::kTextAnimation, slider::kStartDirection};
  return keys;
}

std::string headText(const core::xml::Node& root) {
  std::string text;
  for (const core::xml::Attribute& attribute : root.attributes)
    text += std::string(attribute.name) + "=" + std::string(attribute.value) + " ";
  const core::xml::Node* styles = slider::readDocument(root).styles;
  if (styles != nullptr)
    for (const std::string& name : slider::styleNames(*styles))
      text += name + " ";
  return text;
}

std::string documentText(const std::string& head, const std::vector<slider::Slide>& slides) {
  std::string text = head;
  for (const slider::Slide& slide : slides) {
    text += "{" + slide.backgroundImage.value_or("(none)") + ": ";
    for (const slider::TextObject& caption : slide.textObjects)
      text += "[" + captionText(caption) + "]";
    text += "}";
  }
  return text;
}

std::string positionLine(std::string bytes) {
  std::ranges::replace(bytes, '\n', ' ');
  return bytes;
}

std::string pictureBytes(const std::string& name) {
  return "picture " + name + std::string(30'000, 'p');
}

WorkspaceState stateIn(const std::string& workspace) {
  WorkspaceState state{.document = documentIn(workspace),
                       .position = positionLine(fileBytes(workspace + "/" + kPositionFile)),
                       .others = {}};
  for (const auto& [path, text] : withoutTemporaries(contentsOf(workspace)))
    if (path != kDocumentFile && path != kPositionFile && text != "folder")
      state.others.insert(path);
  return state;
}

std::string lineOf(const WorkspaceState& state) {
  std::string line = state.document + kSeparator + state.position;
  for (const std::string& path : state.others)
    line += kSeparator + path;
  return line;
}

WorkspaceState stateOfLine(std::string_view line) {
  const auto next = [&line] {
    const size_t end = std::min(line.find(kSeparator), line.size());
    std::string part(line.substr(0, end));
    line.remove_prefix(std::min(end + 1, line.size()));
    return part;
  };
  WorkspaceState state{.document = next(), .position = next(), .others = {}};
  while (!line.empty())
    state.others.insert(next());
  return state;
}

} // namespace vireonix::test
