// The host's own icon, drawn by code: a slide on a turning page.
#pragma once

#import <AppKit/AppKit.h>

namespace vireonix::host {

/// An autoreleased picture of 128 by 128 points. Needs an application object.
NSImage* applicationIcon();

} // namespace vireonix::host
