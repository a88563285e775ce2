// Converts text between Foundation and the standard library. Every edge case has one answer, given
// here:
//   nil                     -> empty text
//   invalid UTF-8 (std)     -> each bad byte becomes U+FFFD; the result is never nil
//   lone surrogates         -> U+FFFD, so UTF-8 and strings are always well-formed
// Paths are bytes, not text: they go through the file manager's representation and keep bytes that
// are not UTF-8 where the platform can carry them.
#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

namespace vireonix::bridge {

/// The UTF-8 of a string; empty for nil.
std::string utf8(NSString *text);

/// The 16-bit characters of a string as they are; empty for nil.
std::u16string utf16(NSString *text);

/// An autoreleased string of UTF-8 bytes or of 16-bit characters; never nil.
NSString *string(std::string_view utf8);
NSString *string(std::u16string_view utf16);

/// The bytes that name a file to the operating system; empty for nil and for a path that cannot be
/// represented.
std::string path(NSString *path);

/// An autoreleased path string of the bytes that the operating system gave; never nil.
NSString *pathString(std::string_view bytes);

} // namespace vireonix::bridge
