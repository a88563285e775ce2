// What the fuzz targets for documents share.
#pragma once

#include "Core/xml.h"
#include "require.h"

namespace vireonix::fuzz {

/// That the markup written for a tree reads as a tree for which the same markup is written.
inline void requireStableMarkup(const core::xml::Node& node) {
  const std::string markup = core::xml::write(node);
  const auto again = core::xml::parse(markup, core::xml::Mode::Strict);
  require(again != nullptr, "what is written is well-formed");
  require(core::xml::write(*again) == markup, "what is read back is written the same");
}

} // namespace vireonix::fuzz
