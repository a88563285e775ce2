#include "xml_plain_parser.h"

#include "utf8.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace vireonix::core::xml {
namespace {

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

  std::optional<Node> run() {
    if (!declaration())
      return std::nullopt;
    while (!rest_.empty()) {
      if (!item() || ++itemsTaken_ + attributesTaken_ > kMaxNodes)
        return std::nullopt;
    }
    if (!open_.empty() || done_.size() != 1)
      return std::nullopt;
    return std::move(done_.front());
  }

private:
  // An element whose end tag is still to come; its children so far are at the end of `done_`.
  struct Open {
    Node element;
    std::size_t firstChild;
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

  // The characters with the predefined entities replaced; nothing for any other reference.
  static std::optional<std::string> expanded(std::string_view raw) {
    std::size_t at = raw.find('&');
    if (at == std::string_view::npos)
      return std::string(raw);
    std::string out;
    for (; at != std::string_view::npos; at = raw.find('&')) {
      out += raw.substr(0, at);
      raw.remove_prefix(at);
      const auto* const entity = std::ranges::find_if(
          kPredefined, [raw](const Entity& each) { return raw.starts_with(each.reference); });
      if (entity == kPredefined.end())
        return std::nullopt;
      out += entity->character;
      raw.remove_prefix(entity->reference.size());
    }
    return out += raw;
  }

  bool declaration() {
    if (!take("<?xml"))
      return true;
    if (!takeAttributes() || !take("?>") || attributes_.empty() || attributes_.size() > 2)
      return false;
    const auto said = takeAll(attributes_, 0);
    return said.front() == Attribute{"version", "1.0"} &&
           (said.size() == 1 || said.back() == Attribute{"encoding", "UTF-8"} ||
            said.back() == Attribute{"encoding", "utf-8"});
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

  bool add(NodeKind kind, std::string content) {
    done_.push_back(
        {.kind = kind, .content = std::move(content), .attributes = {}, .children = {}});
    return true;
  }

  bool characters() {
    const std::string_view raw = takeFirst(rest_.find('<'));
    if (open_.empty())
      return raw.find_first_not_of(kSpace) == std::string_view::npos;
    if (raw.find("]]>") != std::string_view::npos)
      return false;
    auto text = expanded(raw);
    return text && add(NodeKind::Text, *std::move(text));
  }

  bool comment() {
    const auto content = takeUntil("--");
    if (!content || !take(">"))
      return false;
    return open_.empty() || add(NodeKind::Comment, std::string(*content));
  }

  bool cdataSection() {
    const auto content = takeUntil("]]>");
    return content && !open_.empty() && add(NodeKind::CData, std::string(*content));
  }

  bool startTag() {
    const std::string_view name = takeName();
    if (name.empty() || open_.size() == kMaxDepth || !takeAttributes())
      return false;
    Node node = element(std::string(name));
    node.attributes = takeAll(attributes_, 0);
    if (take("/>"))
      done_.push_back(std::move(node));
    else if (take(">"))
      open_.push_back({.element = std::move(node), .firstChild = done_.size()});
    else
      return false;
    return true;
  }

  bool endTag() {
    if (open_.empty() || !take(open_.back().element.content))
      return false;
    skipSpace();
    if (!take(">"))
      return false;
    Node node = std::move(open_.back().element);
    node.children = takeAll(done_, open_.back().firstChild);
    open_.pop_back();
    done_.push_back(std::move(node));
    return true;
  }

  // The attributes up to what is none, with the white space before it.
  bool takeAttributes() {
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
        std::ranges::find(attributes_, name, &Attribute::name) != attributes_.end())
      return false;
    ++attributesTaken_;
    auto value = expanded(*raw);
    if (!value)
      return false;
    attributes_.push_back({std::string(name), *std::move(value)});
    return true;
  }

  // Moves the end of `from` into a vector that is as large as it must be.
  template <class Item>
  static std::vector<Item> takeAll(std::vector<Item>& from, std::size_t first) {
    const auto start = from.begin() + static_cast<std::ptrdiff_t>(first);
    std::vector<Item> taken(std::make_move_iterator(start), std::make_move_iterator(from.end()));
    from.erase(start, from.end());
    return taken;
  }

  std::string_view rest_;
  std::vector<Open> open_;
  std::vector<Node> done_;
  std::vector<Attribute> attributes_;
  std::size_t itemsTaken_ = 0;
  std::size_t attributesTaken_ = 0;
};

} // namespace

std::optional<Node> parsePlain(std::string_view document) {
  return isPlainText(document) ? PlainParser(document).run() : std::nullopt;
}

} // namespace vireonix::core::xml
