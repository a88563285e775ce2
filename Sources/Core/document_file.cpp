#include "document_file.h"

namespace vireonix::core::slider {

void DocumentFile::take(const std::string& path, const std::optional<FileState>& state,
                        const xml::Node* root) {
  root_ = root != nullptr ? xml::copyWithoutChildren(*root) : nullptr;
  path_ = path;
  // The state from before the reading: a change meanwhile has the next save read again. One that
  // is too young to tell a further change is not remembered.
  state_ = state && isSettled(*state) ? state : std::nullopt;
}

xml::Tree DocumentFile::root(const std::string& path) {
  const std::optional<FileState> state = fileState(path);
  if (state && state == state_ && path == path_)
    return root_;
  take(path, state, xml::parseFile(path).get());
  return root_;
}

Status DocumentFile::replace(const std::string& path, std::string_view document) {
  std::optional<FileState> made;
  Status status = replaceFile(path, document, Durability::Machine, &made);
  if (made && path == path_)
    state_ = made;
  return status;
}

} // namespace vireonix::core::slider
