#include "file_tree.h"
#include "xml.h"

#include <optional>

namespace vireonix::core::xml {

Tree parseFile(const std::string& path) {
  const std::optional<std::string> bytes = readFile(path);
  if (!bytes)
    return nullptr;
  Tree root = parse(*bytes, Mode::Strict);
  return root ? root : parse(*bytes, Mode::Lenient);
}

} // namespace vireonix::core::xml
