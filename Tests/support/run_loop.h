// Pumps the run loop until a condition holds: what tests use instead of sleeping.
#pragma once

#import <Foundation/Foundation.h>

#include <functional>

namespace vireonix::test {

/// Runs the current run loop in `mode` until `condition` holds or `seconds` have passed, several
/// times as many under a sanitizer; answers whether it held.
bool pumpUntil(const std::function<bool()> &condition, double seconds = 10,
               NSString *mode = NSDefaultRunLoopMode);

/// Runs the current run loop in `mode` for `seconds`; only for proving that something does not
/// happen.
void pumpFor(double seconds, NSString *mode = NSDefaultRunLoopMode);

/// Waits for one event of the application, `seconds` at the most, and hands it to its window.
void takeEvent(double seconds);

/// As pumpUntil, and also hands the application's events to their windows.
bool pumpEventsUntil(const std::function<bool()> &condition, double seconds = 10);

/// As pumpFor, and also hands the application's events to their windows.
void pumpEventsFor(double seconds);

} // namespace vireonix::test
