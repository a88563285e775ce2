#include "support/privileges.h"

#include <array>
#include <csignal>
#include <linux/capability.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace vireonix::test {
namespace {

constexpr unsigned kFilePowers = 1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH;

using CapabilitySets = std::array<__user_cap_data_struct, 2>;

void setFilePowers(bool on) {
  __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
  CapabilitySets sets = {};
  if (syscall(SYS_capget, &header, sets.data()) != 0)
    return;
  const unsigned powers = sets[0].permitted & kFilePowers;
  sets[0].effective = on ? sets[0].effective | powers : sets[0].effective & ~powers;
  syscall(SYS_capset, &header, sets.data());
}

} // namespace

WithoutPrivileges::WithoutPrivileges() {
  setFilePowers(false);
}

WithoutPrivileges::~WithoutPrivileges() {
  setFilePowers(true);
}

FullDisk::FullDisk(unsigned long bytes) {
  (void)std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit = {};
  getrlimit(RLIMIT_FSIZE, &limit);
  limitBefore_ = limit.rlim_cur;
  limit.rlim_cur = bytes;
  setrlimit(RLIMIT_FSIZE, &limit);
}

FullDisk::~FullDisk() {
  rlimit limit = {};
  getrlimit(RLIMIT_FSIZE, &limit);
  limit.rlim_cur = limitBefore_;
  setrlimit(RLIMIT_FSIZE, &limit);
}

} // namespace vireonix::test
