#include "document_file.h"

namespace vireonix::core::slider {

// The state from before the reading: a change meanwhile has the next save read again.
void DocumentFile::willRead(const std::string& path) {
  path_ = path;
  const std::optional<FileState> state = fileState(path);
  state_ = state && isSettled(*state) ? state : std::nullopt;
}

void DocumentFile::didRead(const xml::Node* root) {
  root_ = root != nullptr ? xml::copyWithoutChildren(*root) : nullptr;
}

xml::Tree DocumentFile::root(const std::string& path) {
  if (path != path_ || !state_ || fileState(path) != state_) {
    willRead(path);
    didRead(xml::parseFile(path).get());
  }
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
