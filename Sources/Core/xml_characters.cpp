#include "xml_characters.h"

#include "utf8.h"

namespace vireonix::core::xml {
namespace {

bool isIllegal(std::string_view sequence) {
  const auto first = static_cast<unsigned char>(sequence.front());
  if (first < 0x20)
    return first != '\t' && first != '\n' && first != '\r';
  return isNonCharacter(sequence);
}

} // namespace

bool isNonCharacter(std::string_view sequence) {
  return sequence == "\xEF\xBF\xBE" || sequence == "\xEF\xBF\xBF";
}

std::string legalCharacters(std::string_view text) {
  const std::string whole = wellFormedUtf8(text);
  std::string out;
  out.reserve(whole.size());
  for (std::string_view rest = whole; !rest.empty();) {
    const std::string_view sequence = rest.substr(0, utf8SequenceLength(rest));
    if (!isIllegal(sequence))
      out += sequence;
    rest.remove_prefix(sequence.size());
  }
  return out;
}

} // namespace vireonix::core::xml
