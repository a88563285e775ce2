// One XIB document in memory and what the tool does to it.
#pragma once

#include "nib_localizer/strings_table.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

// libxml2's own names for its types.
struct _xmlDoc;  // NOLINT(bugprone-reserved-identifier)
struct _xmlNode; // NOLINT(bugprone-reserved-identifier)

namespace vireonix::nibs {

/// Gives the translation of a user-visible text.
using Translate = std::function<std::string(const std::string& text)>;

class XibDocument {
public:
  /// Reads a file; nothing when it is not well-formed XML or not an Interface Builder 3 document.
  static std::optional<XibDocument> read(const std::filesystem::path& file);
  /// The same from memory.
  static std::optional<XibDocument> parse(std::string_view xml);

  /// Replaces every text that a user can see: titles, tool tips, placeholders, column headings and
  /// combo box items. Texts without a letter ("%", "…") stay.
  void translate(const Translate& translation);

  /// Every text that `translate` would replace, in document order, repeated as it occurs.
  [[nodiscard]] std::vector<std::string> texts() const;

  /// Makes the document say outright what GNUstep's loader does not assume or misreads, and gives
  /// controls the frames that AppKit would draw inside them.
  void adaptToGnustep();

  /// The whole document as UTF-8 XML.
  [[nodiscard]] std::string xml() const;

private:
  struct Free {
    void operator()(_xmlDoc* document) const;
  };
  explicit XibDocument(_xmlDoc* document) : document_(document) {}

  std::unique_ptr<_xmlDoc, Free> document_;
};

} // namespace vireonix::nibs
