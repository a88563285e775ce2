// What an editing session tells of its workspace, and what is found there: as text, to be compared.
#pragma once

#include "Core/slider_document.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vireonix::test {

inline constexpr const char* kDocumentFile = "intro_asset/data.xml";
inline constexpr const char* kPositionFile = "settings.dat";

/// The keys of a caption that the panel's controls change.
const std::vector<std::string_view>& captionKeys();

struct WorkspaceState {
  /// What the document says, without what the panel never changes; empty for one that is not whole.
  std::string document;
  /// The position file in one line.
  std::string position;
  /// The paths of all other files.
  std::set<std::string> others;
};

/// The text of a document's slides; `head` is that of its root and its styles.
std::string documentText(const std::string& head, const std::vector<core::slider::Slide>& slides);
std::string headText(const core::xml::Node& root);

/// The bytes of a position file in one line.
std::string positionLine(std::string bytes);

/// What the picture of a name holds.
std::string pictureBytes(const std::string& name);

/// What stands in a workspace, but for the temporary entries of killed processes.
WorkspaceState stateIn(const std::string& workspace);

/// One line, and back.
std::string lineOf(const WorkspaceState& state);
WorkspaceState stateOfLine(std::string_view line);

} // namespace vireonix::test
