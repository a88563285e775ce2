#include "path_text.h"

#include "entry_copy.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace vireonix::core {

namespace {

constexpr int kMostLinks = 40;

std::string realPath(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr),
                                                         &std::free);
  return real ? std::string(real.get()) : std::string();
}

std::string canonicalPath(std::string_view given, int links);

std::string canonicalPlace(std::string_view given, int links) {
  const std::string_view path = withoutEndSlashes(given);
  const std::string_view folder = folderOf(path);
  const std::string_view name = path.substr(path.rfind('/') + 1); // all of it without a slash
  if (folder == path)
    return std::string(path);
  const std::string canonical = canonicalPath(folder, links);
  return canonical.empty() ? canonical : joined(canonical, name);
}

std::string canonicalPath(std::string_view given, int links) {
  const std::string path(withoutEndSlashes(given));
  if (std::string real = realPath(path); !real.empty() || links > kMostLinks)
    return real;
  std::string target;
  if (readLink({AT_FDCWD, path}, target) != 0 || target.empty())
    return canonicalPlace(path, links + 1);
  return canonicalPath(target.front() == '/' ? target : joined(folderOf(path), target), links + 1);
}

} // namespace

std::string_view withoutEndSlashes(std::string_view path) {
  while (path.size() > 1 && path.back() == '/')
    path.remove_suffix(1);
  return path;
}

std::string_view folderOf(std::string_view path) {
  const size_t slash = path.rfind('/');
  return slash == path.npos ? "." : path.substr(0, std::max<size_t>(slash, 1));
}

std::string joined(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (!path.ends_with('/'))
    path += '/';
  return path += name;
}

bool isWithin(const std::string& inner, const std::string& outer) {
  return inner == outer || inner.starts_with(joined(outer, {}));
}

bool isAnythingAt(const std::string& path) {
  struct stat info {};
  return lstat(path.c_str(), &info) == 0;
}

std::string canonicalPath(std::string_view path) {
  return canonicalPath(path, 0);
}

std::string canonicalPlace(std::string_view path) {
  return canonicalPlace(path, 0);
}

} // namespace vireonix::core
