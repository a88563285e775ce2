// The slider document's file between two saves. Any thread, one at a time.
#pragma once

#include "core_border.h"
#include "file_tree.h"
#include "status.h"
#include "xml.h"

#include <optional>
#include <string>
#include <string_view>

namespace vireonix::core::slider {

/// Knows the root's attributes of the document that it last read or wrote, so that a save reads the
/// old document only when somebody else has changed it.
class DocumentFile {
public:
  /// Somebody reads the document at `path`, and tells before it and afterwards, with the root that
  /// was there, null for none.
  void willRead(const std::string& path);
  void didRead(const xml::Node* root);

  /// The root element, without what is below it, of the document as it is on disk now; null when
  /// there is none. `path` is bytes for the operating system.
  xml::Tree root(const std::string& path);

  /// Replaces the file durably by a document whose root has the attributes of the last `root`.
  Status replace(const std::string& path, std::string_view document);

private:
  std::string path_;
  // In which `root_` was there; nothing when a further change may leave it as it is.
  std::optional<FileState> state_;
  xml::Tree root_;
};

} // namespace vireonix::core::slider
