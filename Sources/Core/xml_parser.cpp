// Reading what is not plain: libxml2's call-back interface, which tells what it meets in document
// order, builds our tree. Its own tree is not used, because it would need as much memory again, and
// because the older set of call-backs gives attributes and namespace declarations together and in
// their order.
#include "xml.h"
#include "xml_characters.h"
#include "xml_name.h"
#include "xml_plain_parser.h"
#include "xml_tree_builder.h"

#include <algorithm>
#include <climits>
#include <exception>
#include <memory>
#include <string>

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
  return legalCharacters(value);
}

// A repaired document may hold names that cannot be written.
std::string_view elementName(std::string_view name) {
  return isName(name) ? name : "_";
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
    endText();
    if (tree_.depth() == kMaxDepth || (tree_.depth() == 0 && tree_.count() > 0))
      return fail();
    tree_.startElement(elementName(view(name)));
    for (; attributes != nullptr && attributes[0] != nullptr && isInBounds(); attributes += 2) {
      if (isName(view(attributes[0])))
        tree_.attribute(view(attributes[0]), attributeValue(attributes[1]));
    }
  }

  void end() {
    endText();
    if (tree_.depth() > 0)
      tree_.endElement();
  }

  // Text arrives in pieces of the parser's choice; one stretch of it is one node.
  void characters(std::string_view piece) {
    if (tree_.depth() > 0)
      text_ += legalCharacters(piece);
  }

  void add(NodeKind kind, std::string_view content) {
    endText();
    if (tree_.depth() > 0 && isInBounds())
      tree_.add(kind, content);
  }

  void fail() {
    failed_ = true;
    xmlStopParser(parser_);
  }

  // The root; in a repaired document elements may be left open.
  Tree take() {
    if (failed_)
      return nullptr;
    while (tree_.depth() > 0)
      end();
    return tree_.take();
  }

private:
  void endText() {
    if (!text_.empty() && isInBounds())
      tree_.add(NodeKind::Text, text_);
    text_.clear();
  }

  bool isInBounds() {
    if (tree_.count() >= kMaxNodes)
      fail();
    return !failed_;
  }

  xmlParserCtxtPtr parser_;
  TreeBuilder tree_;
  std::string text_;
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
    builder.add(NodeKind::CData, legalCharacters(view(characters, length)));
  });
}

void onComment(void* self, const xmlChar* characters) {
  Builder::run(self, [=](Builder& builder) {
    builder.add(NodeKind::Comment, legalCharacters(view(characters)));
  });
}

// What a processing instruction says: a reader takes the white space after its target away, and a
// repaired document may hold more of it behind a character that is dropped.
std::string instructionData(const xmlChar* data) {
  const std::string legal = legalCharacters(view(data));
  return legal.substr(std::min(legal.find_first_not_of(" \t\r\n"), legal.size()));
}

// In a repaired document an XML declaration may stand anywhere, and a reserved target in any case
// of its letters; written there, they would make the document unreadable.
void onProcessingInstruction(void* self, const xmlChar* target, const xmlChar* data) {
  if (!isInstructionTarget(view(target)))
    return;
  Builder::run(self, [=](Builder& builder) {
    std::string content(view(target));
    if (const std::string said = instructionData(data); !said.empty())
      content += " " + said;
    builder.add(NodeKind::ProcessingInstruction, content);
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

// The document, handed to the parser piece by piece. libxml2 compares each attribute of an element
// with all before it and tells of none before the last: between the pieces is the place to see
// that there are too many.
struct Input {
  std::string_view rest;
  xmlParserCtxtPtr parser = nullptr;
  bool tooManyNames = false;

  static int read(void* self, char* buffer, int size) {
    auto& input = *static_cast<Input*>(self);
    input.tooManyNames = input.parser != nullptr && xmlDictSize(input.parser->dict) > kMaxNames;
    if (input.tooManyNames)
      return -1;
    const std::size_t length = input.rest.copy(buffer, static_cast<std::size_t>(size));
    input.rest.remove_prefix(length);
    return static_cast<int>(length);
  }
};

Tree build(std::string_view document, Mode mode) {
  Input input = {.rest = document};
  const std::unique_ptr<xmlParserCtxt, FreeParser> parser(xmlCreateIOParserCtxt(
      nullptr, nullptr, Input::read, nullptr, &input, XML_CHAR_ENCODING_NONE));
  if (!parser)
    return nullptr;
  input.parser = parser.get();
  Builder builder(parser.get());
  *parser->sax = callbacks();
  parser->userData = &builder;
  xmlCtxtUseOptions(parser.get(), optionsFor(mode));
  xmlParseDocument(parser.get());
  if (input.tooManyNames || (mode == Mode::Strict && parser->wellFormed == 0))
    return nullptr;
  return builder.take();
}

} // namespace

Tree parse(std::string_view document, Mode mode) {
  static const bool kReady = (xmlInitParser(), true);
  if (!kReady || document.empty() || document.size() > INT_MAX)
    return nullptr;
  try {
    if (Tree root = parsePlain(document))
      return root;
    return build(document, mode);
  } catch (const std::exception&) {
    return nullptr;
  }
}

} // namespace vireonix::core::xml
