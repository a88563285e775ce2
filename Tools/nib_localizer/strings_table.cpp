#include "nib_localizer/strings_table.h"

#include "nib_localizer/utf8.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace vireonix::nibs {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kHexDigits = 4;

class Parser {
public:
  explicit Parser(std::string_view text) : text_(text) {
    if (text_.starts_with(kByteOrderMark))
      position_ = kByteOrderMark.size();
  }

  std::variant<StringsTable, StringsError> run() {
    if (!isValidUtf8(text_))
      return StringsError{.line = 1, .reason = "not UTF-8"};
    while (skipSpace() && !atEnd() && readEntry()) {
    }
    if (!reason_.empty())
      return StringsError{.line = lineAt(position_), .reason = reason_};
    return std::move(table_);
  }

private:
  [[nodiscard]] bool atEnd() const { return position_ >= text_.size(); }
  [[nodiscard]] std::string_view rest() const { return text_.substr(position_); }

  bool fail(std::string_view reason) {
    reason_ = reason;
    return false;
  }

  [[nodiscard]] int lineAt(std::size_t position) const {
    const std::string_view before = text_.substr(0, std::min(position, text_.size()));
    return 1 + static_cast<int>(std::ranges::count(before, '\n'));
  }

  // White space and comments; false when a comment has no end.
  bool skipSpace() {
    while (!atEnd()) {
      if (std::string_view(" \t\r\n").find(text_[position_]) != std::string_view::npos)
        ++position_;
      else if (rest().starts_with("//"))
        position_ = std::min(text_.find('\n', position_), text_.size());
      else if (!rest().starts_with("/*"))
        return true;
      else if (!skipBlockComment())
        return false;
    }
    return true;
  }

  bool skipBlockComment() {
    const std::size_t end = text_.find("*/", position_ + 2);
    if (end == std::string_view::npos)
      return fail("a comment without an end");
    position_ = end + 2;
    return true;
  }

  bool expect(char wanted) {
    if (!skipSpace())
      return false;
    if (atEnd() || text_[position_] != wanted)
      return fail(std::string("expected '") + wanted + "'");
    ++position_;
    return true;
  }

  bool readEntry() {
    const std::size_t start = position_;
    std::string key;
    std::string translation;
    if (!readQuoted(key) || !expect('=') || !skipSpace() || !readQuoted(translation) ||
        !expect(';'))
      return false;
    if (table_.emplace(key, std::move(translation)).second)
      return true;
    position_ = start;
    return fail("the key \"" + key + "\" occurs twice");
  }

  bool readQuoted(std::string& into) {
    if (!expect('"'))
      return false;
    const std::size_t start = position_;
    while (!atEnd() && text_[position_] != '"') {
      if (text_[position_] != '\\')
        into += text_[position_++];
      else if (!readEscape(into))
        return false;
    }
    if (!atEnd()) {
      ++position_;
      return true;
    }
    position_ = start;
    return fail("a text without a closing quote");
  }

  bool readEscape(std::string& into) {
    const std::string_view escape = rest().substr(0, 2);
    constexpr std::pair<std::string_view, char> kPlain[] = {
        {"\\\"", '"'}, {"\\\\", '\\'}, {"\\'", '\''}, {"\\n", '\n'}, {"\\r", '\r'}, {"\\t", '\t'}};
    for (const auto& [written, meant] : kPlain) {
      if (escape == written) {
        into += meant;
        position_ += written.size();
        return true;
      }
    }
    return escape == "\\U" ? readCodeUnit(into) : fail("an unknown escape");
  }

  // \U0041: one code point of the basic plane.
  bool readCodeUnit(std::string& into) {
    const std::string_view digits = rest().substr(2, kHexDigits);
    unsigned code = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
    const bool whole = digits.size() == kHexDigits && end == digits.data() + digits.size();
    if (error != std::errc{} || !whole || !isCodePoint(code))
      return fail("\\U needs four hexadecimal digits that name a character");
    appendUtf8(into, code);
    position_ += 2 + kHexDigits;
    return true;
  }

  std::string_view text_;
  std::size_t position_ = 0;
  std::string reason_;
  StringsTable table_;
};

} // namespace

std::variant<StringsTable, StringsError> parseStrings(std::string_view text) {
  return Parser(text).run();
}

} // namespace vireonix::nibs
