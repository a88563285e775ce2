#import "vireonix/TextObjectRecord.h"

#import "Bridge/text.h"
#import "vireonix/slider_records.h"

#include <gtest/gtest.h>

#include <string>

using namespace vireonix;
namespace slider = vireonix::core::slider;
namespace xml = vireonix::core::xml;

namespace {

const slider::TextObject kTextObject = {{"Align", "C"}, {"text", "Hi"}, {"size", "9"}};

xml::Tree shapeOf(const std::string &attributes) {
  return xml::parse("<slide><text " + attributes + "><text/></text></slide>", xml::Mode::Strict);
}

class RecordMarkup : public testing::Test {
protected:
  ~RecordMarkup() override { [pool_ release]; }

  // What is remembered must be what is written anew.
  void expectMarkup(const std::string &expected) {
    EXPECT_EQ([record_ markupInShape:shape_], expected);
    EXPECT_EQ(slider::textObjectMarkup(textObjectOfRecord(record_), shape_.get()), expected);
  }

  NSAutoreleasePool *pool_ = [[NSAutoreleasePool alloc] init];
  TextObjectRecord *record_ = static_cast<TextObjectRecord *>(recordOfTextObject(kTextObject));
  xml::Tree shape_ = shapeOf("Align='X'");
};

std::string markup(const std::string &align, const std::string &text) {
  return "<text Align=\"" + align + "\"><text><![CDATA[<b><font size=\"9\" color=\"(null)\">" +
         text + "</font></b>]]></text></text>";
}

} // namespace

TEST_F(RecordMarkup, FollowsEveryChangeOfTheRecord) {
  expectMarkup(markup("C", "Hi"));
  setRecordText(record_, slider::kText, @"Ho");
  expectMarkup(markup("C", "Ho"));
  [record_ removeObjectForKey:@"Align"];
  expectMarkup(markup("X", "Ho"));
  [record_ setValue:@"TL" forKey:@"Align"];
  expectMarkup(markup("TL", "Ho"));
  [record_ addEntriesFromDictionary:@{@"Align" : @"BR", @"text" : @"Ha"}];
  expectMarkup(markup("BR", "Ha"));
  [record_ removeAllObjects];
  expectMarkup("<text Align=\"X\"><text><![CDATA[<b><font size=\"(null)\" color=\"(null)\">(null)"
               "</font></b>]]></text></text>");
}

TEST_F(RecordMarkup, FollowsTheTemplate) {
  expectMarkup(markup("C", "Hi"));
  shape_ = shapeOf("Align='X' new='1'");
  expectMarkup("<text Align=\"C\" new=\"1\"><text><![CDATA[<b><font size=\"9\" color=\"(null)\">Hi"
               "</font></b>]]></text></text>");
}

TEST_F(RecordMarkup, ATextThatIsChangedAfterwardsDoesNotChangeTheRecord) {
  NSMutableString *text = [NSMutableString stringWithString:@"before"];
  setRecordText(record_, slider::kText, text);
  expectMarkup(markup("C", "before"));
  [text setString:@"after"];
  expectMarkup(markup("C", "before"));
}

TEST_F(RecordMarkup, ARecordIsADictionaryLikeAnyOther) {
  NSDictionary *plain = @{@"Align" : @"C", @"text" : @"Hi", @"size" : @"9"};
  EXPECT_TRUE([record_ isEqual:plain]);
  EXPECT_TRUE([plain isEqual:record_]);
  EXPECT_EQ([record_ count], 3U);
  NSMutableDictionary *copy = [[record_ mutableCopy] autorelease];
  [copy setObject:@"Ho" forKey:@"text"];
  EXPECT_TRUE([record_ isEqual:plain]);
  NSMutableDictionary *made = [TextObjectRecord dictionaryWithDictionary:plain];
  EXPECT_TRUE([made isEqual:plain]);
}
