// Editing the captions of the selected slide.
#import "panel_fixture.h"

#import "Bridge/text.h"
#import "Class/XMLElement.h"
#import "support/alerts.h"
#import "support/run_loop.h"

using vireonix::bridge::utf8;
using vireonix::test::AlertAnswers;
using vireonix::test::captionMarkup;
using vireonix::test::documentMarkup;
using vireonix::test::kNo;
using vireonix::test::kYes;
using vireonix::test::PanelTest;
using vireonix::test::slideMarkup;

namespace {

using Names = std::vector<std::string>;

class PanelCaptions : public PanelTest {
protected:
  void openWithThree() {
    open(documentMarkup(
        slideMarkup("1.jpg",
                    captionMarkup("one", "set_animation_style='Zoom' Align='BR' In_Time='3' "
                                         "Stay_Time='4' Text_Align='1' "
                                         "Text_Animation_LetterByLetter='1' "
                                         "Animation_Start_Direction='7' speed='9'") +
                        captionMarkup("two", "Align='nowhere' Text_Align='-1'") +
                        captionMarkup("three")) +
        slideMarkup("2.jpg", captionMarkup("other"))));
    selectSlide(0);
  }

  std::string buttonColor() {
    NSColor *color = [[[panel_ btnTextColor] cell] backgroundColor];
    NSColor *rgb = [color colorUsingColorSpaceName:NSCalibratedRGBColorSpace];
    char text[16];
    snprintf(text, sizeof text, "%.2f %.2f %.2f", [rgb redComponent], [rgb greenComponent],
             [rgb blueComponent]);
    return text;
  }
};

} // namespace

TEST_F(PanelCaptions, SelectingOneShowsItsValues) {
  openWithThree();
  selectCaption(0);
  EXPECT_EQ(textOf([panel_ txtCaption]), "one");
  EXPECT_EQ(textOf([panel_ txtTextSize]), "24");
  EXPECT_EQ(textOf([panel_ txtInTime]), "3");
  EXPECT_EQ(textOf([panel_ txtStayTime]), "4");
  EXPECT_EQ([[panel_ comAlign] indexOfSelectedItem], 8);
  EXPECT_EQ(textOf([panel_ comAlign]), utf8([[panel_ comAlign] itemObjectValueAtIndex:8]));
  EXPECT_EQ([[panel_ comTextAlign] indexOfSelectedItem], 1);
  EXPECT_EQ(buttonColor(), "1.00 0.00 0.00");
  EXPECT_EQ(selectContentIndex(), 0);
  EXPECT_TRUE([[panel_ btnBrowse] isEnabled]);
}

TEST_F(PanelCaptions, AValueWithoutAnItemShowsTheFirstItem) {
  openWithThree();
  selectCaption(1);
  EXPECT_EQ([[panel_ comAlign] indexOfSelectedItem], 0);
  EXPECT_EQ([[panel_ comTextAlign] indexOfSelectedItem], 0);
  EXPECT_EQ(textOf([panel_ comTextAlign]), utf8([[panel_ comTextAlign] itemObjectValueAtIndex:0]));
}

TEST_F(PanelCaptions, TheStyleIsShownByNameAndSelectedByNumber) {
  openWithThree();
  selectCaption(0);
  EXPECT_EQ(textOf([panel_ comStyle]), "Zoom");
  EXPECT_EQ([[panel_ comStyle] indexOfSelectedItem], 0);
  [[[captions() list] objectAtIndex:1] setObject:@"2nd" forKey:@"set_animation_style"];
  selectCaption(1);
  EXPECT_EQ([[panel_ comStyle] indexOfSelectedItem], 2);
}

TEST_F(PanelCaptions, SavingAnUntouchedOneKeepsItsStyle) {
  openWithThree();
  selectCaption(0);
  [panel_ onContentSave:nil];
  EXPECT_EQ(savedValue(0, 0, "set_animation_style"), "Zoom");
  EXPECT_EQ(savedValue(0, 0, "Align"), "BR");
  EXPECT_EQ(savedValue(0, 0, "color"), "#FF0000");
  EXPECT_EQ(savedValue(0, 0, "speed"), "9");
}

TEST_F(PanelCaptions, AddingWithoutACaptionWarns) {
  openWithThree();
  AlertAnswers answers;
  [panel_ onContentAdd:nil];
  ASSERT_EQ(answers.shown().size(), 1U);
  EXPECT_EQ(answers.shown()[0].message, "Warming:");
  EXPECT_EQ(answers.shown()[0].information, "The caption is null, please input the caption first!");
  EXPECT_EQ(captionTexts().size(), 3U);
}

TEST_F(PanelCaptions, AddingWithoutASlideDoesNothingAndSaysNothing) {
  open(documentMarkup(slideMarkup("1.jpg")));
  const std::string before = document();
  AlertAnswers answers;
  [panel_ onContentAdd:nil];
  [[panel_ txtCaption] setStringValue:@"x"];
  [panel_ onContentAdd:nil];
  EXPECT_TRUE(answers.shown().empty());
  EXPECT_EQ(document(), before);
}

TEST_F(PanelCaptions, AddingAppendsOrInsertsBeforeTheSelectedOne) {
  openWithThree();
  [[panel_ txtCaption] setStringValue:@"last"];
  [panel_ onContentAdd:nil];
  EXPECT_EQ(captionTexts(), (Names{"one", "two", "three", "last"}));
  selectCaption(1);
  [[panel_ txtCaption] setStringValue:@"before two"];
  [panel_ onContentAdd:nil];
  settle();
  EXPECT_EQ(captionTexts(), (Names{"one", "before two", "two", "three", "last"}));
  EXPECT_EQ([[panel_ tbContent] selectedRow], 1);
  EXPECT_EQ(savedValue(0, 1, "text"), "before two");
  EXPECT_EQ(savedValue(0, 4, "text"), "last");
}

TEST_F(PanelCaptions, ANewOneTakesEveryValueFromTheControlsAndTheRestFromTheTemplate) {
  openWithThree();
  [[panel_ txtCaption] setStringValue:@"new"];
  [[panel_ txtTextSize] setStringValue:@"99 as it stands"];
  [[panel_ comAlign] selectItemAtIndex:3];
  [[panel_ comTextAlign] selectItemAtIndex:1];
  [[panel_ comStyle] setStringValue:@"Own style"];
  [[[panel_ btnTextColor] cell] setBackgroundColor:[NSColor colorWithCalibratedRed:0 green:0.5
                                                                              blue:1
                                                                             alpha:1]];
  [panel_ onContentAdd:nil];
  const std::pair<const char *, const char *> expected[] = {{"text", "new"},
                                                            {"size", "99 as it stands"},
                                                            {"color", "#007FFF"},
                                                            {"set_animation_style", "Own style"},
                                                            {"Align", "CL"},
                                                            {"In_Time", "0"},
                                                            {"Stay_Time", "1"},
                                                            {"Text_Align", "1"},
                                                            {"speed", "2"},
                                                            {"Text_Animation_LetterByLetter", "0"},
                                                            {"Animation_Start_Direction", "0"}};
  for (const auto &[key, value] : expected)
    EXPECT_EQ(savedValue(0, 3, key), value) << key;
  EXPECT_EQ(valueOf(3, "Background_image"), "1.jpg");
}

TEST_F(PanelCaptions, RemovingSelectsTheOneThatFollowed) {
  openWithThree();
  selectCaption(1);
  [panel_ onContentRemove:nil];
  settle();
  EXPECT_EQ(captionTexts(), (Names{"one", "three"}));
  EXPECT_EQ([[panel_ tbContent] selectedRow], 1);
  EXPECT_EQ(textOf([panel_ txtCaption]), "three");
  [panel_ onContentRemove:nil];
  settle();
  EXPECT_EQ(selectContentIndex(), 0);
  EXPECT_EQ(textOf([panel_ txtCaption]), "one");
  [panel_ onContentRemove:nil];
  settle();
  EXPECT_EQ(captionTexts(), Names{});
  EXPECT_EQ(selectContentIndex(), -1);
  EXPECT_EQ(textOf([panel_ txtCaption]), "");
  EXPECT_EQ(savedValue(0, 0, "text"), "(no caption)");
  [panel_ onContentRemove:nil];
}

TEST_F(PanelCaptions, DeselectingOneDisablesTheSlideButtons) {
  openWithThree();
  selectCaption(0);
  [[panel_ tbContent] deselectAll:nil];
  settle();
  EXPECT_EQ(textOf([panel_ txtCaption]), "");
  EXPECT_EQ(textOf([panel_ txtInTime]), "3");
  EXPECT_FALSE([[panel_ btnBrowse] isEnabled]);
  EXPECT_FALSE([[panel_ btnRemove] isEnabled]);
}

TEST_F(PanelCaptions, ShowingAnotherSlideLeavesTheSlideButtonsEnabled) {
  openWithThree();
  selectCaption(0);
  selectSlide(1);
  settle();
  EXPECT_EQ([[panel_ tbContent] selectedRow], -1);
  EXPECT_EQ(textOf([panel_ txtCaption]), "");
  EXPECT_TRUE([[panel_ btnBrowse] isEnabled]);
  EXPECT_TRUE([[panel_ btnRemove] isEnabled]);
  selectCaption(0);
  [[panel_ tbContent] deselectAll:nil];
  settle();
  EXPECT_FALSE([[panel_ btnBrowse] isEnabled]);
}

TEST_F(PanelCaptions, AComboBoxChangesTheSelectedOne) {
  openWithThree();
  selectCaption(2);
  [[panel_ comAlign] selectItemAtIndex:2];
  [panel_ onTypeButtonChange:[panel_ comAlign]];
  EXPECT_EQ(savedValue(0, 2, "Align"), "TR");
  [[panel_ comTextAnimation] selectItemAtIndex:1];
  [panel_ onTypeButtonChange:[panel_ comTextAnimation]];
  EXPECT_EQ(savedValue(0, 2, "Text_Animation_LetterByLetter"), "1");
  [[panel_ comStyle] setStringValue:@"Fly"];
  [panel_ onTypeButtonChange:[panel_ comStyle]];
  EXPECT_EQ(savedValue(0, 2, "set_animation_style"), "Fly");
}

TEST_F(PanelCaptions, AComboBoxWithoutASelectionIsStoredAsSuch) {
  openWithThree();
  selectCaption(0);
  [[panel_ comAlign] deselectItemAtIndex:[[panel_ comAlign] indexOfSelectedItem]];
  [[panel_ comTextAlign] deselectItemAtIndex:[[panel_ comTextAlign] indexOfSelectedItem]];
  [panel_ onTypeButtonChange:[panel_ comAlign]];
  [panel_ onTypeButtonChange:[panel_ comTextAlign]];
  EXPECT_EQ(valueOf(0, "Align"), "C");
  EXPECT_EQ(valueOf(0, "Text_Align"), "-1");
  [panel_ onContentSave:nil];
  EXPECT_EQ(valueOf(0, "Align"), "TL");
  EXPECT_EQ(valueOf(0, "Text_Align"), "0");
}

TEST_F(PanelCaptions, TypingChangesTheSelectedOneAtOnce) {
  openWithThree();
  selectCaption(1);
  type([panel_ txtCaption], "typed");
  EXPECT_EQ(savedValue(0, 1, "text"), "typed");
  type([panel_ txtCaption], "");
  EXPECT_EQ(savedValue(0, 1, "text"), "");
  type([panel_ txtTextSize], "5");
  EXPECT_EQ(savedValue(0, 1, "size"), "5");
}

TEST_F(PanelCaptions, NumbersAreCheckedAsTheyAreTyped) {
  struct Case {
    const char *typed;
    std::vector<NSInteger> answers;
    const char *shown;
    const char *stored;
  };
  const Case inTimes[] = {
      {"250", {kNo}, "200", "200"}, {"250", {kYes}, "250", "250"}, {"200", {}, "200", "200"},
      {"0", {kNo}, "0", "3"},       {"0", {kYes}, "0", "3"},       {"", {}, "", "3"},
      {"12a", {}, "12", "3"},       {"1a2", {}, "1a2", "1a2"},     {"-5", {}, "-5", "3"},
      {"250x", {kYes}, "250", "3"}, {"250x", {kNo}, "200", "200"}};
  openWithThree();
  selectCaption(0);
  for (const Case &each : inTimes) {
    [[[captions() list] objectAtIndex:0] setObject:@"3" forKey:@"In_Time"];
    AlertAnswers answers(each.answers);
    type([panel_ txtInTime], each.typed);
    EXPECT_EQ(textOf([panel_ txtInTime]), each.shown) << each.typed;
    EXPECT_EQ(valueOf(0, "In_Time"), each.stored) << each.typed;
    EXPECT_EQ(answers.shown().size(), each.answers.size()) << each.typed;
  }
}

TEST_F(PanelCaptions, TheSizeHasALimitAndAReplacementOfItsOwn) {
  openWithThree();
  selectCaption(0);
  {
    AlertAnswers answers({kNo, kNo});
    type([panel_ txtTextSize], "0");
    EXPECT_EQ(textOf([panel_ txtTextSize]), "10");
    EXPECT_EQ(valueOf(0, "size"), "10");
    type([panel_ txtTextSize], "61");
    EXPECT_EQ(valueOf(0, "size"), "60");
    EXPECT_EQ(answers.shown()[0].message, "Attention:");
    EXPECT_EQ(answers.shown()[0].information,
              "The text size range 10-60 is recommended, Are you insist to use the input value ?");
  }
  AlertAnswers none;
  type([panel_ txtTextSize], "5");
  EXPECT_TRUE(none.shown().empty());
}

TEST_F(PanelCaptions, TypingKeepsTheInsertionPoint) {
  openWithThree();
  selectCaption(0);
  [window_ makeFirstResponder:[panel_ txtCaption]];
  NSText *editor = [[panel_ txtCaption] currentEditor];
  ASSERT_NE(editor, nil);
  [editor setSelectedRange:NSMakeRange(1, 0)];
  [editor insertText:@"X"];
  settle();
  EXPECT_EQ([[panel_ txtCaption] currentEditor], editor);
  EXPECT_TRUE([[editor string] isEqualToString:@"oXne"]);
  EXPECT_EQ([editor selectedRange].location, 2U);
  EXPECT_EQ(savedValue(0, 0, "text"), "oXne");
  [window_ makeFirstResponder:[panel_ txtInTime]];
  editor = [[panel_ txtInTime] currentEditor];
  [editor setString:@"12"];
  [editor setSelectedRange:NSMakeRange(2, 0)];
  [editor insertText:@"a"];
  EXPECT_TRUE([[editor string] isEqualToString:@"12"]);
  EXPECT_EQ([[panel_ txtInTime] currentEditor], editor);
  EXPECT_TRUE(NSEqualRanges([editor selectedRange], NSMakeRange(2, 0)));
  [editor insertText:@"3"];
  EXPECT_TRUE([[editor string] isEqualToString:@"123"]);
}

TEST_F(PanelCaptions, WhatXmlCannotCarryNeverStopsLaterSaves) {
  openWithThree();
  selectCaption(0);
  const unichar control[] = {'a', 1, 0xFFFF, ']', ']', '>', 'b'};
  [[panel_ txtCaption] setStringValue:[NSString stringWithCharacters:control length:7]];
  [panel_
      controlTextDidChange:[NSNotification notificationWithName:NSControlTextDidChangeNotification
                                                         object:[panel_ txtCaption]]];
  EXPECT_NE(document().find("a]]]]><![CDATA[>b"), std::string::npos);
  selectCaption(1);
  type([panel_ txtCaption], "still saved");
  EXPECT_EQ(savedValue(0, 1, "text"), "still saved");
}

TEST_F(PanelCaptions, TheTemplateOfANewOneIsNeverNil) {
  openWithThree();
  EXPECT_EQ([[panel_ getTextDictTemplate:nil] count], 0U);
  XMLElement *slide = [XMLElement elementWithXMLString:@"<slide Background_image='b'><text a='1'/>"
                                                        "</slide>"];
  EXPECT_TRUE(
      [[panel_ getTextDictTemplate:slide] isEqual:(@{@"Background_image" : @"b", @"a" : @"1"})]);
}
