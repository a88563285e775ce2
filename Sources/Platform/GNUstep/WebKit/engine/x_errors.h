// Keeps the X error handlers of the host and of GDK apart: Xlib has one handler for all connections
// of a process.
#pragma once

namespace vireonix::platform {

/// Remember the host's handlers; to be called before GDK opens its connection.
void rememberHostErrorHandlers();

/// From now on errors of GDK's connection go to GDK's handler and all others to the host's.
void separateErrorHandlers();

} // namespace vireonix::platform
