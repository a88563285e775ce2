#include "Core/slider_document.h"

#include <gtest/gtest.h>

#include <vector>

using vireonix::core::slider::TextObject;

namespace {

std::vector<TextObject::Entry> entriesOf(const TextObject& object) {
  std::vector<TextObject::Entry> entries;
  for (std::size_t i = 0; i < object.size(); ++i)
    entries.push_back(object.at(i));
  return entries;
}

} // namespace

TEST(TextObject, AValueOfAnotherLengthLeavesTheOthersAndTheOrderAsTheyAre) {
  TextObject object{{"text", "Hi"}, {"size", "24"}, {"", "no name"}, {"Align", ""}};
  using Entries = std::vector<TextObject::Entry>;
  object.set("text", "Welcome");
  object.set("size", "9");
  object.set("Align", "BR");
  EXPECT_EQ(entriesOf(object),
            (Entries{{"text", "Welcome"}, {"size", "9"}, {"", "no name"}, {"Align", "BR"}}));
  object.set("text", "");
  object.set("color", "#FF0000");
  EXPECT_EQ(
      entriesOf(object),
      (Entries{
          {"text", ""}, {"size", "9"}, {"", "no name"}, {"Align", "BR"}, {"color", "#FF0000"}}));
  EXPECT_EQ(object.find("Align"), "BR");
  EXPECT_EQ(object.find("align"), std::nullopt);
}

TEST(TextObject, IsEqualToOneThatCameToTheSameEntriesAnotherWay) {
  TextObject object{{"text", "a long one"}, {"size", "24"}};
  object.set("text", "Hi");
  EXPECT_EQ(object, (TextObject{{"text", "Hi"}, {"size", "24"}}));
  EXPECT_NE(object, (TextObject{{"text", "Hi2"}, {"size", "4"}}));
}
