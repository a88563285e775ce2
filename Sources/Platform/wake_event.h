// An event that means nothing: what an event loop is given so that it looks up.
#pragma once

#import <AppKit/AppKit.h>

namespace vireonix::platform {

inline NSEvent *wakeEvent() {
  return [NSEvent otherEventWithType:NSApplicationDefined location:NSZeroPoint modifierFlags:0
                           timestamp:0
                        windowNumber:0
                             context:nil
                             subtype:0
                               data1:0
                               data2:0];
}

} // namespace vireonix::platform
