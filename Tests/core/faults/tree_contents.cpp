#include "tree_contents.h"

#include "support/temporary_folder.h"

#include <filesystem>

namespace vireonix::test {

namespace fs = std::filesystem;

Contents contentsOf(const std::string& root) {
  Contents contents;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    const fs::file_status status = entry.symlink_status();
    std::string& text = contents[entry.path().lexically_relative(root)];
    if (fs::is_symlink(status))
      text = "link " + fs::read_symlink(entry.path()).string();
    else if (fs::is_regular_file(status))
      text = "file " + fileBytes(entry.path());
    else
      text = fs::is_directory(status) ? "folder" : "special";
  }
  return contents;
}

Contents withoutTemporaries(const Contents& contents) {
  Contents rest;
  for (const auto& [path, text] : contents)
    if (path.find(".vireonix-") == path.npos)
      rest.emplace(path, text);
  return rest;
}

std::string lossAgainst(const Contents& first, const Contents& second, const Contents& now) {
  std::string loss;
  const auto has = [](const Contents& tree, const std::string& path, const std::string& text) {
    const auto found = tree.find(path);
    return found != tree.end() && found->second == text;
  };
  for (const auto& [path, text] : now)
    if (!has(first, path, text) && !has(second, path, text))
      loss += "neither old nor new: " + path + " (" + text.substr(0, 60) + ")\n";
  for (const auto& entry : first)
    if (second.contains(entry.first) && !now.contains(entry.first))
      loss += "lost: " + entry.first + "\n";
  return loss;
}

} // namespace vireonix::test
