// Takes from the calling thread what lets root pass over the permissions of files, so that a test
// sees what another user would.
#pragma once

namespace vireonix::test {

/// While it lives, permissions hold for the thread that made it. Does nothing for other users.
class WithoutPrivileges {
public:
  WithoutPrivileges();
  ~WithoutPrivileges();
  WithoutPrivileges(const WithoutPrivileges&) = delete;
  WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;
};

/// While it lives, the process's files stop growing at so many bytes, as on a full disk. (The errno
/// value is EFBIG and not ENOSPC.)
class FullDisk {
public:
  explicit FullDisk(unsigned long bytes);
  ~FullDisk();
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

private:
  unsigned long limitBefore_ = 0;
};

} // namespace vireonix::test
