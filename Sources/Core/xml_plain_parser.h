// A fast reader of the plain part of XML. Internal to the XML reader. Any thread.
#pragma once

#include "xml.h"

#include <string_view>

namespace vireonix::core::xml {

/// The root element of a well-formed UTF-8 document that holds nothing but elements, attributes,
/// text, CDATA sections, comments and the predefined entities, with ASCII names without colons.
///
/// Null for any other document, be it well-formed or not: what this reader is not sure of is for
/// the general parser, which answers the same for all that this one reads. May throw what running
/// out of memory throws.
Tree parsePlain(std::string_view document);

} // namespace vireonix::core::xml
