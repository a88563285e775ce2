// The strict reader of documents beside libxml2's tree of the same bytes.
#include "documents.h"
#include "input.h"

#include <algorithm>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>

using namespace vireonix::core;
using namespace vireonix::fuzz;
using xml::Node;
using xml::NodeKind;

namespace {

std::string_view view(const xmlChar* text) {
  return text != nullptr ? reinterpret_cast<const char*>(text) : std::string_view();
}

std::string qualifiedName(const xmlNs* space, const xmlChar* name) {
  if (space == nullptr || space->prefix == nullptr)
    return std::string(view(name));
  return std::string(view(space->prefix)) + ":" + std::string(view(name));
}

void compareAttributes(const Node& ours, const xmlNode* theirs) {
  std::size_t count = 0;
  for (const xmlAttr* each = theirs->properties; each != nullptr; each = each->next) {
    ++count;
    const std::string_view* value = ours.attribute(qualifiedName(each->ns, each->name));
    xmlChar* expected = xmlNodeListGetString(theirs->doc, each->children, 1);
    require(value != nullptr && *value == view(expected), "an attribute's value is libxml2's");
    xmlFree(expected);
  }
  const auto declared = std::ranges::count_if(ours.attributes, [](const auto& attribute) {
    return attribute.name == "xmlns" || attribute.name.starts_with("xmlns:");
  });
  require(ours.attributes.size() == count + static_cast<std::size_t>(declared),
          "the attributes are libxml2's");
}

// The characters of the section at `at` and of those that follow: libxml2 makes one of neighbours.
std::string joinedSections(xml::List<Node> nodes, std::size_t& at) {
  std::string joined(nodes[at].content);
  while (at + 1 < nodes.size() && nodes[at + 1].kind == NodeKind::CData)
    joined += nodes[++at].content;
  return joined;
}

bool isSection(const Node& ours, const xmlNode* theirs) {
  return ours.kind == NodeKind::CData && theirs->type == XML_CDATA_SECTION_NODE;
}

void compareChildren(xml::List<Node> ours, const xmlNode* theirs);

void compare(const Node& ours, const xmlNode* theirs) {
  switch (theirs->type) {
  case XML_ELEMENT_NODE:
    require(ours.isElement(qualifiedName(theirs->ns, theirs->name)), "an element is libxml2's");
    compareAttributes(ours, theirs);
    break;
  case XML_TEXT_NODE:
    require(ours.kind == NodeKind::Text && ours.content == view(theirs->content),
            "a text is libxml2's");
    break;
  case XML_COMMENT_NODE:
    require(ours.kind == NodeKind::Comment && ours.content == view(theirs->content),
            "a comment is libxml2's");
    break;
  default:
    require(ours.kind == NodeKind::ProcessingInstruction, "a node is libxml2's");
  }
  compareChildren(ours.children, theirs->children);
}

void compareChildren(xml::List<Node> ours, const xmlNode* theirs) {
  for (std::size_t at = 0; at < ours.size(); ++at) {
    require(theirs != nullptr, "no node is made up");
    if (isSection(ours[at], theirs))
      require(joinedSections(ours, at) == view(theirs->content), "a CDATA section is libxml2's");
    else
      compare(ours[at], theirs);
    theirs = theirs->next;
  }
  require(theirs == nullptr, "no node is lost");
}

// Declarations of a document type add defaults and entities, which ours leaves out on purpose.
bool declaresType(std::string_view document) {
  return document.find("DOCTYPE") != std::string_view::npos;
}

constexpr int kOptions = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE;

// Whether libxml2 calls a document well-formed, and how deep its elements nest. Its trees do not
// tell the first: they know namespaces, and refuse or change names like "a:1" and "a:b:c".
class WellFormedness {
public:
  explicit WellFormedness(std::string_view document) {
    xmlParserCtxt* parser =
        xmlCreateMemoryParserCtxt(document.data(), static_cast<int>(document.size()));
    *parser->sax = {};
    parser->sax->startElement = start;
    parser->sax->endElement = end;
    parser->userData = this;
    xmlCtxtUseOptions(parser, kOptions);
    xmlParseDocument(parser);
    holds_ = parser->wellFormed != 0;
    xmlFreeDoc(parser->myDoc);
    xmlFreeParserCtxt(parser);
  }

  [[nodiscard]] bool holds() const { return holds_; }
  [[nodiscard]] std::size_t depth() const { return deepest_; }

private:
  static void start(void* self, const xmlChar* /*name*/, const xmlChar** /*attributes*/) {
    auto& answer = *static_cast<WellFormedness*>(self);
    answer.deepest_ = std::max(answer.deepest_, ++answer.depth_);
  }
  static void end(void* self, const xmlChar* /*name*/) {
    --static_cast<WellFormedness*>(self)->depth_;
  }

  std::size_t depth_ = 0;
  std::size_t deepest_ = 0;
  bool holds_ = false;
};

// libxml2's own tree.
class Reference {
public:
  explicit Reference(std::string_view document) : parser_(xmlNewParserCtxt()) {
    document_ = xmlCtxtReadMemory(parser_, document.data(), static_cast<int>(document.size()),
                                  "document", nullptr, kOptions);
  }
  Reference(const Reference&) = delete;
  Reference& operator=(const Reference&) = delete;
  ~Reference() {
    xmlFreeDoc(document_);
    xmlFreeParserCtxt(parser_);
  }

  [[nodiscard]] const xmlNode* root() const {
    return document_ != nullptr ? xmlDocGetRootElement(document_) : nullptr;
  }
  // Names that break the rules for namespaces are changed in the tree, or refused.
  [[nodiscard]] bool hasPlainNames() const { return parser_->nsWellFormed != 0; }

private:
  xmlParserCtxt* parser_;
  xmlDoc* document_ = nullptr;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view document = textOf(data, size);
  const auto ours = xml::parse(document, xml::Mode::Strict);
  if (ours)
    requireStableMarkup(*ours);
  if (document.empty() || declaresType(document))
    return 0;
  const WellFormedness wellFormed(document);
  if (wellFormed.depth() > xml::kMaxDepth)
    return 0;
  require((ours != nullptr) == wellFormed.holds(), "well-formed is what libxml2 says is");
  const Reference theirs(document);
  if (ours && theirs.hasPlainNames()) {
    require(theirs.root() != nullptr, "libxml2 has a tree of what it calls well-formed");
    compare(*ours, theirs.root());
  }
  return 0;
}
