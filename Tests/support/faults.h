// Makes the system's file calls fail, or kill the process, at the N-th of them.
//
// A program that links faults.cpp has the C library's file calls go through it. Nothing is changed
// until an experiment runs, and each runs in a process of its own.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace vireonix::test {

enum class FaultKind {
  None,       ///< Only counts.
  Kill,       ///< The process is killed before the call is made.
  Error,      ///< The call fails with the error; later ones work again.
  ErrorsOn,   ///< This call and all that follow fail with the error.
  ShortWrite, ///< The call, if it writes, writes half of its bytes.
};

struct Fault {
  FaultKind kind = FaultKind::None;
  /// Which call, from 1.
  long at = 0;
  int error = 0;
  /// Count, and fail, the calls that only look too: open for reading, read, stat.
  bool withReading = false;
  /// The file system cannot exchange two entries in one step.
  bool withoutExchange = false;
};

struct Experiment {
  bool killed = false;
  /// How a process that neither ended well nor was killed by the fault ended; else empty.
  std::string crash;
  /// Calls counted; those in flight included.
  long calls = 0;
  /// The name of the call that was hit; empty when there was none.
  std::string hit;
  /// What the body answered, 0 being success.
  int answer = 0;
  /// Descriptors open after the body less those open before.
  long descriptors = 0;
};

/// Runs the body in a process of its own with one fault in its file calls. No AppKit in the body.
Experiment runWithFault(const Fault& fault, const std::function<int()>& body);

/// Called by a body: what follows meets no fault.
void endFaults();

} // namespace vireonix::test
