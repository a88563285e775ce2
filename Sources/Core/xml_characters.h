// What a document can hold: Extensible Markup Language (XML) 1.0, fifth edition, production 2.
// Any thread.
#pragma once

#include "core_border.h"

#include <string>
#include <string_view>

namespace vireonix::core::xml {

/// Whether a well-formed UTF-8 sequence of more than one byte is no character of XML.
[[nodiscard]] bool isNonCharacter(std::string_view sequence);

/// The text without the characters that XML cannot carry; each bad byte becomes U+FFFD.
[[nodiscard]] std::string legalCharacters(std::string_view text);

} // namespace vireonix::core::xml
