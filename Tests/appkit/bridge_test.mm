#import "Bridge/text.h"

#include <gtest/gtest.h>

// Foundation refuses to make such a string from an array, but text that a user cut apart arrives
// like this.
@interface UnpairedString : NSString
@end

@implementation UnpairedString
- (NSUInteger)length {
  return 4;
}
- (unichar)characterAtIndex:(NSUInteger)index {
  const unichar units[] = {'a', 0xD83D, 'b', 0xDE00};
  return units[index];
}
@end

using vireonix::bridge::path;
using vireonix::bridge::pathString;
using vireonix::bridge::string;
using vireonix::bridge::utf8;

TEST(BridgeText, NilIsEmptyText) {
  EXPECT_EQ(utf8(nil), "");
}

TEST(BridgeText, TextOfEveryPlaneComesBack) {
  const std::string text = "a\xC3\xA4\xE6\x97\xA5\xF0\x9F\x98\x80";
  EXPECT_EQ(utf8(string(text)), text);
}

TEST(BridgeText, InvalidBytesBecomeReplacementCharacters) {
  EXPECT_EQ(utf8(string("a\xFF"
                        "b\xC3")),
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD");
  EXPECT_EQ(utf8(string("\xED\xA0\x80")), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(BridgeText, LoneSurrogatesBecomeReplacementCharacters) {
  NSString *text = [[UnpairedString new] autorelease];
  EXPECT_EQ(utf8(text), "a\xEF\xBF\xBD"
                        "b\xEF\xBF\xBD");
}

TEST(BridgeText, EmptyTextGivesAnEmptyString) {
  EXPECT_TRUE([string("") isEqualToString:@""]);
}

TEST(BridgePath, NilIsEmptyAndOrdinaryPathsComeBack) {
  EXPECT_EQ(path(nil), "");
  EXPECT_EQ(path(pathString("/tmp/a b/\xC3\xA4")), "/tmp/a b/\xC3\xA4");
}
