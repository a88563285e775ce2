#import "Bridge/text.h"
#import "Class/TextTemplate.h"

#include <gtest/gtest.h>

using vireonix::bridge::utf8;

namespace {

TextTemplate *templateOf(NSString *text) {
  return [[[TextTemplate alloc] initFromStr:text] autorelease];
}

} // namespace

TEST(TextTemplateClass, PlaceholdersGiveWayToTheirValues) {
  TextTemplate *text = templateOf(@"A${x}B${y}C");
  [text setItem:@"x" value:[NSNumber numberWithInt:1]];
  EXPECT_EQ(utf8([text parse]), "A1BC");
  [text setItem:@"x" value:@"${y}"];
  [text setItem:@"y" value:@"\U0001F600"];
  EXPECT_EQ(utf8([text parse]), "A${y}B\xF0\x9F\x98\x80"
                                "C");
  [text setItem:@"y" value:nil];
  [text setItem:nil value:@"z"];
  EXPECT_EQ(utf8([text parse]), "A${y}BC");
}

TEST(TextTemplateClass, TheTextIsCopiedAndTheResultBelongsToTheTemplate) {
  NSMutableString *source = [NSMutableString stringWithString:@"Hi-${name"];
  TextTemplate *text = templateOf(source);
  [source setString:@"other"];
  EXPECT_EQ(utf8([text parse]), "Hi-");
  [text setItem:@"name" value:@"Ann"];
  NSString *result = [text parse];
  EXPECT_EQ(utf8(result), "Hi-Ann");
  EXPECT_EQ([text valueForKey:@"outStr"], result);
  EXPECT_EQ(utf8([text valueForKey:@"fromStr"]), "Hi-${name");
  EXPECT_EQ([[text valueForKey:@"keyAndValues"] count], 1U);
}

TEST(TextTemplateClass, AKeyWithAnAtSignIsAKeyLikeAnyOther) {
  TextTemplate *text = templateOf(@"${@count} ${@none}.");
  [text setItem:@"@count" value:@"three"];
  EXPECT_EQ(utf8([text parse]), "three .");
}

TEST(TextTemplateClass, AnEmptyOrMissingTextGivesEmptyText) {
  EXPECT_EQ(utf8([templateOf(@"") parse]), "");
  EXPECT_EQ(utf8([templateOf(nil) parse]), "");
  EXPECT_NE([templateOf(nil) parse], nil);
}
