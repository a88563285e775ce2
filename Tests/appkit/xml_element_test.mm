#import "Class/XMLElement.h"

#import "Bridge/text.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

using vireonix::bridge::pathString;
using vireonix::bridge::utf8;
using vireonix::test::TemporaryFolder;

namespace {

XMLElement *rootOf(const std::string &bytes) {
  const TemporaryFolder folder;
  return [XMLElement rootElementOfFile:pathString(folder.write("a.xml", bytes))];
}

} // namespace

TEST(XmlElement, AnswersNameAttributesChildrenAndText) {
  @autoreleasepool {
    XMLElement *root = rootOf("<a z='1&amp;' b='2'> <!--c--><d>x</d><?p i?><d>y</d><e/></a>");
    EXPECT_TRUE([[root name] isEqualToString:@"a"]);
    EXPECT_TRUE([[root attributeForName:@"z"] isEqualToString:@"1&"]);
    EXPECT_EQ([root attributeForName:@"missing"], nil);
    EXPECT_TRUE([[root attributeNames] isEqual:(@[ @"z", @"b" ])]);
    EXPECT_TRUE([[root attributes] isEqual:(@{@"z" : @"1&", @"b" : @"2"})]);
    EXPECT_TRUE([[root stringValue] isEqualToString:@" xy"]);
    EXPECT_EQ([[root children] count], 6U);
    XMLElement *comment = [[root children] objectAtIndex:1];
    XMLElement *instruction = [[root children] objectAtIndex:3];
    EXPECT_EQ([comment name], nil);
    EXPECT_TRUE([[instruction name] isEqualToString:@"p"]);
    EXPECT_EQ([[root elementsForName:@"d"] count], 2U);
    EXPECT_EQ([[root elementsForName:@"nothing"] count], 0U);
    EXPECT_EQ(utf8([root XMLString]),
              "<a z=\"1&amp;\" b=\"2\"> <!--c--><d>x</d><?p i?><d>y</d><e/></a>");
  }
}

TEST(XmlElement, IsReadLenientlyWhenItIsMalformedAndIsNilWhenItIsNotXml) {
  @autoreleasepool {
    EXPECT_EQ(utf8([rootOf("<a><b>x</a>") XMLString]), "<a><b>x</b></a>");
    EXPECT_EQ(rootOf("no markup"), nil);
    EXPECT_EQ(rootOf(""), nil);
    EXPECT_EQ([XMLElement rootElementOfFile:@"/no/such/file"], nil);
    EXPECT_EQ([XMLElement rootElementOfFile:nil], nil);
    EXPECT_EQ([XMLElement rootElementOfFile:@"/"], nil);
  }
}

TEST(XmlElement, AStringIsReadStrictly) {
  @autoreleasepool {
    EXPECT_EQ([XMLElement elementWithXMLString:@"<a>"], nil);
    EXPECT_EQ([XMLElement elementWithXMLString:nil], nil);
    EXPECT_TRUE([[[XMLElement elementWithXMLString:@"<a>x</a>"] stringValue] isEqual:@"x"]);
    EXPECT_EQ([XMLElement elementWithNode:nullptr], nil);
  }
}

TEST(XmlElement, AChildOutlivesTheElementThatItCameFrom) {
  XMLElement *child = nil;
  @autoreleasepool {
    child = [[[rootOf("<a><b c='1'>long enough not to be kept in place</b></a>") children]
        lastObject] retain];
  }
  EXPECT_TRUE([[child stringValue] hasPrefix:@"long enough"]);
  EXPECT_TRUE([[child attributeForName:@"c"] isEqualToString:@"1"]);
  [child release];
}
