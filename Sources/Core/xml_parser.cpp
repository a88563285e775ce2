// Reading what is not plain: libxml2's call-back interface, which tells what it meets in document
// order, builds our tree. Its own tree is not used, because it would need as much memory again, and
// because the older set of call-backs gives attributes and namespace declarations together and in
// their order.
#include "utf8.h"
#include "xml.h"
#include "xml_plain_parser.h"

#include <climits>
#include <exception>
#include <memory>
#include <utility>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

namespace vireonix::core::xml {
namespace {

std::string_view view(const xmlChar* characters) {
  return characters != nullptr ? reinterpret_cast<const char*>(characters) : std::string_view();
}

std::string_view view(const xmlChar* characters, int length) {
  return {reinterpret_cast<const char*>(characters), static_cast<std::size_t>(length)};
}

// A repaired document may hold bytes of no character.
std::string owned(std::string_view characters) {
  return wellFormedUtf8(characters);
}

// Where entities are not expanded, an ampersand of a value is handed out as a reference to it.
std::string attributeValue(const xmlChar* characters) {
  constexpr std::string_view kAmpersand = "&#38;";
  std::string_view rest = view(characters);
  std::string value;
  for (auto at = rest.find(kAmpersand); at != std::string_view::npos; at = rest.find(kAmpersand)) {
    value += rest.substr(0, at + 1);
    rest.remove_prefix(at + kAmpersand.size());
  }
  value += rest;
  return owned(value);
}

// Names and values alternate up to a null.
std::size_t pairsIn(const xmlChar** attributes) {
  std::size_t count = 0;
  while (attributes != nullptr && attributes[2 * count] != nullptr)
    ++count;
  return count;
}

class Builder {
public:
  explicit Builder(xmlParserCtxtPtr parser) : parser_(parser) {}

  // Runs one call-back's work; an exception must not pass through the parser's C code.
  template <class Work> static void run(void* self, Work work) {
    auto& builder = *static_cast<Builder*>(self);
    if (builder.failed_)
      return;
    try {
      work(builder);
    } catch (const std::exception&) {
      builder.fail();
    }
  }

  void start(const xmlChar* name, const xmlChar** attributes) {
    if (open_.size() == kMaxDepth || (open_.empty() && root_))
      return fail();
    Node node = element(owned(view(name)));
    node.attributes.reserve(pairsIn(attributes));
    for (; attributes != nullptr && attributes[0] != nullptr; attributes += 2) {
      if (!count())
        return;
      node.attributes.push_back({owned(view(attributes[0])), attributeValue(attributes[1])});
    }
    if (count())
      open_.push_back(std::move(node));
  }

  void end() {
    if (open_.empty())
      return;
    Node node = std::move(open_.back());
    open_.pop_back();
    if (open_.empty())
      root_ = std::move(node);
    else
      open_.back().children.push_back(std::move(node));
  }

  // Text arrives in pieces of the parser's choice; one stretch of it is one node.
  void characters(std::string_view piece) {
    if (open_.empty())
      return;
    auto& siblings = open_.back().children;
    if (!siblings.empty() && siblings.back().kind == NodeKind::Text)
      siblings.back().content += owned(piece);
    else
      add(NodeKind::Text, owned(piece));
  }

  void add(NodeKind kind, std::string content) {
    if (!open_.empty() && count())
      open_.back().children.push_back(
          {.kind = kind, .content = std::move(content), .attributes = {}, .children = {}});
  }

  void fail() {
    failed_ = true;
    xmlStopParser(parser_);
  }

  // The root; in a repaired document elements may be left open.
  std::optional<Node> take() {
    if (failed_)
      return std::nullopt;
    while (!open_.empty())
      end();
    return std::move(root_);
  }

private:
  bool count() {
    if (++nodes_ > kMaxNodes)
      fail();
    return !failed_;
  }

  xmlParserCtxtPtr parser_;
  std::vector<Node> open_;
  std::optional<Node> root_;
  std::size_t nodes_ = 0;
  bool failed_ = false;
};

void onStartElement(void* self, const xmlChar* name, const xmlChar** attributes) {
  Builder::run(self, [=](Builder& builder) { builder.start(name, attributes); });
}

void onEndElement(void* self, const xmlChar* /*name*/) {
  Builder::run(self, [](Builder& builder) { builder.end(); });
}

void onCharacters(void* self, const xmlChar* characters, int length) {
  Builder::run(self, [=](Builder& builder) { builder.characters(view(characters, length)); });
}

void onCData(void* self, const xmlChar* characters, int length) {
  Builder::run(self, [=](Builder& builder) {
    builder.add(NodeKind::CData, owned(view(characters, length)));
  });
}

void onComment(void* self, const xmlChar* characters) {
  Builder::run(self,
               [=](Builder& builder) { builder.add(NodeKind::Comment, owned(view(characters))); });
}

void onProcessingInstruction(void* self, const xmlChar* target, const xmlChar* data) {
  Builder::run(self, [=](Builder& builder) {
    std::string content = owned(view(target));
    if (data != nullptr)
      content += " " + owned(view(data));
    builder.add(NodeKind::ProcessingInstruction, std::move(content));
  });
}

// Without entity call-backs no declared entity is known, so nothing can be expanded or fetched; the
// predefined ones and character references need none. The same call-back for white space as for
// text keeps all of it. Errors are not wanted: whether there were any is asked afterwards.
xmlSAXHandler callbacks() {
  xmlSAXHandler handler = {};
  handler.startElement = onStartElement;
  handler.endElement = onEndElement;
  handler.characters = onCharacters;
  handler.ignorableWhitespace = onCharacters;
  handler.cdataBlock = onCData;
  handler.comment = onComment;
  handler.processingInstruction = onProcessingInstruction;
  handler.initialized = 1;
  return handler;
}

struct FreeParser {
  void operator()(xmlParserCtxt* parser) const {
    // The parser keeps declared entities in a document of its own.
    if (parser->myDoc != nullptr)
      xmlFreeDoc(parser->myDoc);
    parser->myDoc = nullptr;
    xmlFreeParserCtxt(parser);
  }
};

int optionsFor(Mode mode) {
  // Without the limits of libxml2, which forbid long captions; ours take their place.
  constexpr int kAlways =
      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE;
  return mode == Mode::Lenient ? kAlways | XML_PARSE_RECOVER : kAlways;
}

std::optional<Node> build(std::string_view document, Mode mode) {
  const std::unique_ptr<xmlParserCtxt, FreeParser> parser(
      xmlCreateMemoryParserCtxt(document.data(), static_cast<int>(document.size())));
  if (!parser)
    return std::nullopt;
  Builder builder(parser.get());
  *parser->sax = callbacks();
  parser->userData = &builder;
  xmlCtxtUseOptions(parser.get(), optionsFor(mode));
  xmlParseDocument(parser.get());
  if (mode == Mode::Strict && parser->wellFormed == 0)
    return std::nullopt;
  return builder.take();
}

} // namespace

std::optional<Node> parse(std::string_view document, Mode mode) {
  static const bool kReady = (xmlInitParser(), true);
  if (!kReady || document.empty() || document.size() > INT_MAX)
    return std::nullopt;
  try {
    if (auto root = parsePlain(document))
      return root;
    return build(document, mode);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

} // namespace vireonix::core::xml
