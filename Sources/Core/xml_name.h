// Names of elements, attributes and processing instructions: Extensible Markup Language (XML) 1.0,
// fifth edition, productions 4, 5 and 17. Any thread.
#pragma once

#include "core_border.h"

#include <string_view>

namespace vireonix::core::xml {

/// Whether the UTF-8 text can stand as a name in a document.
[[nodiscard]] bool isName(std::string_view text);

/// Whether it can stand as the target of a processing instruction: a name other than "xml" in any
/// case of its letters.
[[nodiscard]] bool isInstructionTarget(std::string_view text);

} // namespace vireonix::core::xml
