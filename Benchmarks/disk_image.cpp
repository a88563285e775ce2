#include "disk_image.h"

#include "command.h"

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace vireonix::bench {
namespace {

// Much more than the trees need: file systems slow down when they fill. Most of it is a hole.
constexpr std::uintmax_t kSize = std::uintmax_t{2} << 30;

// From now on what this process mounts is mounted for it alone.
void hideMounts() {
  static const bool kHidden =
      unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
  if (!kHidden)
    throw std::system_error(errno, std::generic_category(), "a file system of its own");
}

} // namespace

bool DiskImage::isPossible() {
  return geteuid() == 0 && access("/dev/loop-control", R_OK | W_OK) == 0;
}

DiskImage::DiskImage(const std::string& kind) : path_(folder_.at("mounted")) {
  hideMounts();
  const std::string image = folder_.write("image", {});
  std::filesystem::resize_file(image, kSize);
  // Some speak even when asked to be quiet.
  const char* make = R"(mkfs."$0" -q "$1" >/dev/null)";
  run({"sh", "-c", make, kind.c_str(), image.c_str()});
  std::filesystem::create_directory(path_);
  run({"mount", "-o", "loop", image.c_str(), path_.c_str()});
}

DiskImage::~DiskImage() {
  umount2(path_.c_str(), MNT_DETACH);
}

} // namespace vireonix::bench
