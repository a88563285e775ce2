// A document in any state: read leniently, written as the panel writes it, and read again.
#include "Core/slider_document.h"
#include "documents.h"
#include "input.h"

using namespace vireonix::core;
using namespace vireonix::fuzz;

namespace {

// As the panel does with a document that is template and content in one.
std::string rewritten(const xml::Node& root) {
  const slider::Document document = slider::readDocument(root);
  const slider::DocumentShape shape = {
      .root = &root, .styles = document.styles, .slide = slider::templateSlide(root)};
  slider::textObjectDefaults(shape.slide);
  if (document.styles != nullptr)
    slider::styleNames(*document.styles);
  return slider::writeDocument(document.slides.value_or(std::vector<slider::Slide>()), shape);
}

std::string rewrittenOnce(const std::string& document) {
  const auto root = xml::parse(document, xml::Mode::Strict);
  require(root != nullptr, "a document that was written is well-formed");
  return rewritten(*root);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto root = xml::parse(textOf(data, size), xml::Mode::Lenient);
  if (!root)
    return 0;
  requireStableMarkup(*root);
  // The first time brings the document into shape; a caption that cannot be read becomes none.
  const std::string second = rewrittenOnce(rewritten(*root));
  require(rewrittenOnce(second) == second, "a document saved again without a change is identical");
  return 0;
}
