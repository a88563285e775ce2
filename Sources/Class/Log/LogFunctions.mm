#import "Class/Log/LogFunctions.h"

#import "Bridge/text.h"
#import "Core/log_file.h"

#include <array>
#include <cstdarg>
#include <ctime>

static NSString *const kLogFolder = @"~/Library/Application Support/Marquell/bundle";

namespace {

std::string localDateAndTime() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::array<char, 32> text{};
  const size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &local);
  return {text.data(), length};
}

NSString *messageOf(NSString *format, va_list arguments) {
  return [[[NSString alloc] initWithFormat:format arguments:arguments] autorelease];
}

void writeToConsole(NSString *kind, NSString *format, va_list arguments) {
  NSString *message = format != nil ? messageOf(format, arguments) : @"nil";
  NSLog(@"%@:%@", kind, message);
}

} // namespace

void logDebug(NSString *, ...) {}

void logSave(NSString *format, ...) {
  @autoreleasepool {
    std::optional<std::string> message;
    if (format != nil) {
      va_list arguments;
      va_start(arguments, format);
      message = vireonix::bridge::utf8(messageOf(format, arguments));
      va_end(arguments);
    }
    (void)vireonix::core::appendToLog(
        vireonix::bridge::path([kLogFolder stringByStandardizingPath]), message, localDateAndTime);
  }
}

void logError(NSString *format, ...) {
  @autoreleasepool {
    va_list arguments;
    va_start(arguments, format);
    writeToConsole(@"Error", format, arguments);
    va_end(arguments);
  }
}

void logWarn(NSString *format, ...) {
  @autoreleasepool {
    va_list arguments;
    va_start(arguments, format);
    writeToConsole(@"Warn", format, arguments);
    va_end(arguments);
  }
}
