#include "xml_plain_parser.h"

#include "utf8.h"
#include "xml_tree_builder.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

namespace vireonix::core::xml {
namespace {

// An element with more of them is not plain: finding one of the same name takes too long.
constexpr std::size_t kMostAttributes = 100;
constexpr std::string_view kSpace = " \t\n";

struct Entity {
  std::string_view reference;
  char character;
};
constexpr std::array<Entity, 5> kPredefined = {
    {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}}};

constexpr bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

constexpr bool isNameCharacter(char c) {
  return isLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

// Carriage returns, which a reader of XML turns into line feeds, are not plain.
bool isPlainText(std::string_view text) {
  bool control = false;
  for (const char c : text)
    control |= static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t';
  // U+FFFE and U+FFFF are not characters of XML; their neighbours are rare.
  return !control && isWellFormedUtf8(text) && text.find("\xEF\xBF") == std::string_view::npos;
}

class PlainParser {
public:
  explicit PlainParser(std::string_view document) : rest_(document) {}

  Tree run() {
    if (!declaration())
      return nullptr;
    while (!rest_.empty()) {
      if (!item() || builder_.count() > kMaxNodes)
        return nullptr;
    }
    return builder_.isWhole() ? builder_.take() : nullptr;
  }

private:
  // An attribute as it stands in the document.
  struct Raw {
    std::string_view name;
    std::string_view value;

    bool operator==(const Raw&) const = default;
  };

  bool take(std::string_view mark) {
    if (!rest_.starts_with(mark))
      return false;
    rest_.remove_prefix(mark.size());
    return true;
  }

  std::string_view takeFirst(std::size_t length) {
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(taken.size());
    return taken;
  }

  // What stands before `mark`, which is taken too.
  std::optional<std::string_view> takeUntil(std::string_view mark) {
    const std::size_t at = rest_.find(mark);
    if (at == std::string_view::npos)
      return std::nullopt;
    const std::string_view taken = takeFirst(at);
    rest_.remove_prefix(mark.size());
    return taken;
  }

  bool skipSpace() {
    const std::size_t before = rest_.size();
    rest_.remove_prefix(std::min(rest_.find_first_not_of(kSpace), rest_.size()));
    return rest_.size() != before;
  }

  std::string_view takeName() {
    if (rest_.empty() || !isLetter(rest_.front()))
      return {};
    const auto* end = std::ranges::find_if_not(rest_, isNameCharacter);
    return takeFirst(static_cast<std::size_t>(end - rest_.begin()));
  }

  // The characters with the predefined entities replaced, valid until the next call; nothing for
  // any other reference.
  std::optional<std::string_view> expanded(std::string_view raw) {
    std::size_t at = raw.find('&');
    if (at == std::string_view::npos)
      return raw;
    expanded_.clear();
    for (; at != std::string_view::npos; at = raw.find('&')) {
      expanded_ += raw.substr(0, at);
      raw.remove_prefix(at);
      const auto* const entity = std::ranges::find_if(
          kPredefined, [raw](const Entity& each) { return raw.starts_with(each.reference); });
      if (entity == kPredefined.end())
        return std::nullopt;
      expanded_ += entity->character;
      raw.remove_prefix(entity->reference.size());
    }
    return expanded_ += raw;
  }

  bool declaration() {
    if (!take("<?xml"))
      return true;
    if (!takeAttributes() || !take("?>") || attributes_.empty() || attributes_.size() > 2)
      return false;
    return attributes_.front() == Raw{"version", "1.0"} &&
           (attributes_.size() == 1 || attributes_.back() == Raw{"encoding", "UTF-8"} ||
            attributes_.back() == Raw{"encoding", "utf-8"});
  }

  bool item() {
    if (rest_.front() != '<')
      return characters();
    if (take("</"))
      return endTag();
    if (take("<!--"))
      return comment();
    if (take("<![CDATA["))
      return cdataSection();
    rest_.remove_prefix(1);
    return startTag();
  }

  bool add(NodeKind kind, std::string_view content) {
    builder_.add(kind, content);
    return true;
  }

  bool characters() {
    const std::string_view raw = takeFirst(rest_.find('<'));
    if (builder_.depth() == 0)
      return raw.find_first_not_of(kSpace) == std::string_view::npos;
    if (raw.find("]]>") != std::string_view::npos)
      return false;
    const auto text = expanded(raw);
    return text && add(NodeKind::Text, *text);
  }

  bool comment() {
    const auto content = takeUntil("--");
    if (!content || !take(">"))
      return false;
    return builder_.depth() == 0 || add(NodeKind::Comment, *content);
  }

  bool cdataSection() {
    const auto content = takeUntil("]]>");
    return content && builder_.depth() > 0 && add(NodeKind::CData, *content);
  }

  bool startTag() {
    const std::string_view name = takeName();
    if (name.empty() || builder_.depth() == kMaxDepth || !takeAttributes())
      return false;
    builder_.startElement(name);
    for (const Raw& each : attributes_) {
      const auto value = expanded(each.value);
      if (!value)
        return false;
      builder_.attribute(each.name, *value);
    }
    if (take("/>"))
      builder_.endElement();
    else
      return take(">");
    return true;
  }

  bool endTag() {
    if (builder_.depth() == 0 || !take(builder_.openName()))
      return false;
    skipSpace();
    if (!take(">"))
      return false;
    builder_.endElement();
    return true;
  }

  // The attributes up to what is none, with the white space before it.
  bool takeAttributes() {
    attributes_.clear();
    while (skipSpace() && isLetter(rest_.empty() ? '>' : rest_.front())) {
      if (!takeAttribute())
        return false;
    }
    return true;
  }

  bool takeAttribute() {
    const std::string_view name = takeName();
    skipSpace();
    if (!take("="))
      return false;
    skipSpace();
    if (rest_.empty() || (rest_.front() != '"' && rest_.front() != '\''))
      return false;
    const auto raw = takeUntil(takeFirst(1));
    // White space other than blanks would have to be normalised.
    if (!raw || raw->find_first_of("<\t\n") != std::string_view::npos ||
        attributes_.size() == kMostAttributes ||
        std::ranges::find(attributes_, name, &Raw::name) != attributes_.end())
      return false;
    attributes_.push_back({.name = name, .value = *raw});
    return true;
  }

  std::string_view rest_;
  TreeBuilder builder_;
  std::vector<Raw> attributes_;
  std::string expanded_;
};

} // namespace

Tree parsePlain(std::string_view document) {
  return isPlainText(document) ? PlainParser(document).run() : nullptr;
}

} // namespace vireonix::core::xml
