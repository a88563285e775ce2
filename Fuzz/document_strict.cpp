// The strict reader of documents beside libxml2's tree of the same bytes.
#include "documents.h"
#include "input.h"

#include <algorithm>

#include <libxml/parser.h>
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

std::size_t depthOf(const xmlNode* node) {
  std::size_t deepest = 0;
  for (; node != nullptr; node = node->next) {
    if (node->type == XML_ELEMENT_NODE)
      deepest = std::max(deepest, 1 + depthOf(node->children));
  }
  return deepest;
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

// libxml2's own answer; nothing when the document is not well-formed.
class Reference {
public:
  explicit Reference(std::string_view document, int options = 0) : parser_(xmlNewParserCtxt()) {
    constexpr int kAlways =
        XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE;
    document_ = xmlCtxtReadMemory(parser_, document.data(), static_cast<int>(document.size()),
                                  "document", nullptr, kAlways | options);
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
  // Names that break the rules for namespaces are changed in its tree, or refused.
  [[nodiscard]] bool hasPlainNames() const { return parser_->nsWellFormed != 0; }

private:
  xmlParserCtxt* parser_;
  xmlDoc* document_ = nullptr;
};

// Whether both have read the document, and ours does not give it up for its depth.
bool requireSameAnswer(const xml::Tree& ours, const Reference& theirs) {
  if (theirs.root() != nullptr && depthOf(theirs.root()) > xml::kMaxDepth)
    return false;
  require((ours != nullptr) == (theirs.root() != nullptr), "well-formed is what libxml2 says is");
  return ours != nullptr;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view document = textOf(data, size);
  const auto ours = xml::parse(document, xml::Mode::Strict);
  if (ours)
    requireStableMarkup(*ours);
  if (document.empty() || declaresType(document))
    return 0;
  const Reference theirs(document);
  if (!theirs.hasPlainNames()) {
    requireSameAnswer(ours, Reference(document, XML_PARSE_SAX1));
    return 0;
  }
  if (requireSameAnswer(ours, theirs))
    compare(*ours, theirs.root());
  return 0;
}
