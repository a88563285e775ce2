#include "utf8.h"
#include "xml.h"
#include "xml_characters.h"

#include <array>
#include <utility>

namespace vireonix::core::xml {
namespace {

// How characters are written where they stand.
enum class Place : unsigned char { Text, AttributeValue, Literal };

// What a byte needs before it can be written.
enum class Care : unsigned char { None, Escape, Drop, Decode };

constexpr bool isEscaped(unsigned char byte, Place place) {
  if (place == Place::Literal)
    return byte == '\r';
  if (byte == '&' || byte == '<' || byte == '\r')
    return true;
  if (place == Place::Text)
    return byte == '>';
  // A parser turns unescaped white space of an attribute value into blanks.
  return byte == '"' || byte == '\t' || byte == '\n';
}

constexpr Care careFor(unsigned char byte, Place place) {
  if (byte >= 0x80)
    return Care::Decode;
  if (isEscaped(byte, place))
    return Care::Escape;
  return byte < 0x20 && byte != '\t' && byte != '\n' ? Care::Drop : Care::None;
}

constexpr std::array<Care, 256> careTable(Place place) {
  std::array<Care, 256> table{};
  for (unsigned i = 0; i < table.size(); ++i)
    table[i] = careFor(static_cast<unsigned char>(i), place);
  return table;
}

constexpr std::array<std::array<Care, 256>, 3> kCare = {
    careTable(Place::Text), careTable(Place::AttributeValue), careTable(Place::Literal)};

std::string_view escaped(char c) {
  switch (c) {
  case '&':
    return "&amp;";
  case '<':
    return "&lt;";
  case '>':
    return "&gt;";
  case '"':
    return "&quot;";
  case '\t':
    return "&#9;";
  case '\n':
    return "&#10;";
  default:
    return "&#13;";
  }
}

// Appends the sequence or bad byte at the start of `text`; answers how many bytes that were.
std::size_t appendDecoded(std::string& out, std::string_view text) {
  const std::size_t length = utf8SequenceLength(text);
  if (length == 0) {
    out += kReplacementUtf8;
    return 1;
  }
  if (!isNonCharacter(text.substr(0, length)))
    out += text.substr(0, length);
  return length;
}

// A carriage return that cannot be escaped is read back as a line feed, a pair with a line feed as
// one: writes what will be read.
std::size_t appendLineEnd(std::string& out, std::string_view text) {
  out += '\n';
  return text.starts_with("\r\n") ? 2 : 1;
}

std::size_t appendSpecial(std::string& out, std::string_view text, Care care, Place place) {
  switch (care) {
  case Care::Decode:
    return appendDecoded(out, text);
  case Care::Escape:
    if (place == Place::Literal)
      return appendLineEnd(out, text);
    out += escaped(text.front());
    return 1;
  default:
    return 1;
  }
}

void append(std::string& out, std::string_view text, Place place) {
  const auto& cares = kCare[static_cast<std::size_t>(place)];
  auto careAt = [&](std::size_t i) { return cares[static_cast<unsigned char>(text[i])]; };
  std::size_t plain = 0;
  std::size_t i = 0;
  while (i < text.size()) {
    const Care care = careAt(i);
    if (care == Care::None) {
      ++i;
      continue;
    }
    out.append(text, plain, i - plain);
    i += appendSpecial(out, text.substr(i), care, place);
    plain = i;
  }
  out.append(text, plain);
}

// The characters as they will stand, so that what ends a section is found although a dropped
// character stood within it.
std::string literal(std::string_view characters) {
  std::string out;
  append(out, characters, Place::Literal);
  return out;
}

// A comment holds no "--" and does not end with "-"; repaired documents may have such.
std::string commentCharacters(std::string_view characters) {
  std::string out;
  for (const char c : literal(characters)) {
    if (c == '-' && out.ends_with('-'))
      out += ' ';
    out += c;
  }
  if (out.ends_with('-'))
    out += ' ';
  return out;
}

// A processing instruction ends at the first "?>"; repaired documents may have such.
std::string instructionCharacters(std::string_view characters) {
  std::string out;
  for (const char c : literal(characters)) {
    if (c == '>' && out.ends_with('?'))
      out += ' ';
    out += c;
  }
  return out;
}

} // namespace

Writer::Writer(std::string buffer) : out_(std::move(buffer)) {
  out_.clear();
}

void Writer::closeStartTag() {
  if (std::exchange(startTagOpen_, false))
    out_ += '>';
}

void Writer::declaration() {
  out_ += R"(<?xml version="1.0" encoding="utf-8"?>)";
}

void Writer::startElement(std::string_view name) {
  closeStartTag();
  out_ += '<';
  out_ += name;
  startTagOpen_ = true;
}

void Writer::attribute(std::string_view name, std::string_view value) {
  out_ += ' ';
  out_ += name;
  out_ += "=\"";
  append(out_, value, Place::AttributeValue);
  out_ += '"';
}

void Writer::endElement(std::string_view name) {
  if (std::exchange(startTagOpen_, false)) {
    out_ += "/>";
    return;
  }
  out_ += "</";
  out_ += name;
  out_ += '>';
}

void Writer::text(std::string_view characters) {
  closeStartTag();
  append(out_, characters, Place::Text);
}

void Writer::cdata(std::string_view characters) {
  closeStartTag();
  constexpr std::string_view kEnd = "]]>";
  const std::string all = literal(characters);
  std::string_view rest = all;
  out_ += "<![CDATA[";
  for (auto end = rest.find(kEnd); end != std::string_view::npos; end = rest.find(kEnd)) {
    out_ += rest.substr(0, end + 2);
    out_ += "]]><![CDATA[";
    rest.remove_prefix(end + 2);
  }
  out_ += rest;
  out_ += kEnd;
}

void Writer::node(const Node& node) {
  switch (node.kind) {
  case NodeKind::Element:
    startElement(node.content);
    for (const Attribute& each : node.attributes)
      attribute(each.name, each.value);
    for (const Node& child : node.children)
      this->node(child);
    endElement(node.content);
    return;
  case NodeKind::Text:
    return text(node.content);
  case NodeKind::CData:
    return cdata(node.content);
  case NodeKind::Comment:
    closeStartTag();
    out_ += "<!--" + commentCharacters(node.content) + "-->";
    return;
  case NodeKind::ProcessingInstruction:
    closeStartTag();
    out_ += "<?" + instructionCharacters(node.content) + "?>";
    return;
  }
}

void Writer::markup(std::string_view made) {
  closeStartTag();
  out_ += made;
}

std::string Writer::take() {
  startTagOpen_ = false;
  return std::exchange(out_, {});
}

std::string write(const Node& node) {
  Writer writer;
  writer.node(node);
  return writer.take();
}

} // namespace vireonix::core::xml
