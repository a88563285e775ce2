// The program that the test kills: edits a workspace in a real settings window and tells on a
// descriptor what it does.
//
//     session -channel DESCRIPTOR -workspace FOLDER -pictures FOLDER -seed NUMBER -edits COUNT
#import "editing_script.h"

#import "Bridge/text.h"

#include <cstdio>
#include <cstdlib>

#include <fcntl.h>

using vireonix::bridge::path;

int main() {
  @autoreleasepool {
    NSUserDefaults *arguments = [NSUserDefaults standardUserDefaults];
    const int channel = static_cast<int>([arguments integerForKey:@"channel"]);
    // What holds the channel open longer than this process would hide its end from the test.
    fcntl(channel, F_SETFD, FD_CLOEXEC);
    [NSApplication sharedApplication];
    [NSApp finishLaunching];
    vireonix::test::EditingScript script(channel, path([arguments stringForKey:@"workspace"]),
                                         path([arguments stringForKey:@"pictures"]),
                                         static_cast<unsigned>([arguments integerForKey:@"seed"]));
    script.run(static_cast<int>([arguments integerForKey:@"edits"]));
    std::fflush(nullptr);
    std::_Exit(0);
  }
}
