// What the samples' files hold, found out with the libraries that others read them with.
#pragma once

#include <libxml/tree.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vireonix::test {

struct FreeDocument {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, FreeDocument>;

/// Null when the text is not well-formed.
Document parseStrictly(const std::string& text);

std::string nameOf(const xmlNode* node);
/// The attribute's value; empty when there is none.
std::string attributeOf(const xmlNode* node, const char* name);
std::vector<std::string> attributeNames(const xmlNode* node);
std::vector<const xmlNode*> childrenOf(const xmlNode* node);

/// The first child of that name; null when there is none.
const xmlNode* childNamed(const xmlNode* node, const char* name);

struct PictureSize {
  int width = 0;
  int height = 0;
  int frames = 1;

  bool operator==(const PictureSize&) const = default;
};

/// Decodes a whole jpg, png, gif or swf file by its name's ending; nothing when anything in it is
/// wrong.
std::optional<PictureSize> decodedSize(const std::string& path);

} // namespace vireonix::test
