#include "file_tree.h"
#include "xml.h"

#include <utility>

namespace vireonix::core::xml {

std::optional<Node> parseFile(const std::string& path) {
  const std::optional<std::string> bytes = readFile(path);
  if (!bytes)
    return std::nullopt;
  std::optional<Node> root = parse(*bytes, Mode::Strict);
  return root ? std::move(root) : parse(*bytes, Mode::Lenient);
}

} // namespace vireonix::core::xml
