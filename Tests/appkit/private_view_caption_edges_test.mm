// What the editing of captions does in the rarer states, and what it leaves alone.
#import "panel_fixture.h"

#import "Bridge/text.h"
#import "Class/XMLElement.h"
#import "support/alerts.h"
#import "support/run_loop.h"

using vireonix::bridge::string;
using vireonix::test::AlertAnswers;
using vireonix::test::captionMarkup;
using vireonix::test::documentMarkup;
using vireonix::test::kNo;
using vireonix::test::kYes;
using vireonix::test::PanelTest;
using vireonix::test::pumpFor;
using vireonix::test::pumpUntil;
using vireonix::test::slideMarkup;

namespace {

using Names = std::vector<std::string>;

constexpr const char *kInTimeQuestion =
    "The In-Time value range 0-200 is recommended, Are you insist to use the input value ?";
constexpr const char *kStayTimeQuestion =
    "The Stay-Time value range 0-200 is recommended, Are you insist to use the input value ?";
constexpr const char *kSizeQuestion =
    "The text size range 10-60 is recommended, Are you insist to use the input value ?";

class PanelCaptionEdges : public PanelTest {
protected:
  PanelCaptionEdges() {
    open(documentMarkup(
        slideMarkup("1.jpg", captionMarkup("one", "Stay_Time='4'") + captionMarkup("two"))));
    selectSlide(0);
  }

  NSMutableArray *ownCaptions() { return [[[slides() list] objectAtIndex:0] objectForKey:@"data"]; }

  void deselect(NSComboBox *combo) {
    if ([combo indexOfSelectedItem] >= 0)
      [combo deselectItemAtIndex:[combo indexOfSelectedItem]];
  }

  // How often the panel has had its owner save since the last call.
  int newSaves() {
    pumpFor(0.05);
    const int before = saves_;
    saves_ = [owner_ saves];
    return saves_ - before;
  }

private:
  int saves_ = 0;
};

} // namespace

TEST_F(PanelCaptionEdges, EveryQuestionIsAskedInItsOwnWords) {
  selectCaption(0);
  AlertAnswers answers({kYes, kYes, kYes});
  type([panel_ txtInTime], "201");
  type([panel_ txtStayTime], "201");
  type([panel_ txtTextSize], "61");
  ASSERT_EQ(answers.shown().size(), 3U);
  const char *const questions[] = {kInTimeQuestion, kStayTimeQuestion, kSizeQuestion};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(answers.shown()[i].message, "Attention:");
    EXPECT_EQ(answers.shown()[i].information, questions[i]);
    EXPECT_EQ(answers.shown()[i].buttons, (Names{"YES", "NO"}));
  }
  EXPECT_EQ(savedValue(0, 0, "In_Time"), "201");
  EXPECT_EQ(savedValue(0, 0, "Stay_Time"), "201");
  EXPECT_EQ(savedValue(0, 0, "size"), "61");
}

TEST_F(PanelCaptionEdges, TheStayTimeIsCheckedLikeTheInTime) {
  struct Case {
    const char *typed;
    std::vector<NSInteger> answers;
    const char *shown;
    const char *stored;
  };
  const Case cases[] = {{"250", {kNo}, "200", "200"}, {"250", {kYes}, "250", "250"},
                        {"200", {}, "200", "200"},    {"0", {kNo}, "0", "4"},
                        {"0", {kYes}, "0", "4"},      {"7b", {}, "7", "4"}};
  selectCaption(0);
  for (const Case &each : cases) {
    [[[captions() list] objectAtIndex:0] setObject:@"4" forKey:@"Stay_Time"];
    AlertAnswers answers(each.answers);
    type([panel_ txtStayTime], each.typed);
    EXPECT_EQ(textOf([panel_ txtStayTime]), each.shown) << each.typed;
    EXPECT_EQ(valueOf(0, "Stay_Time"), each.stored) << each.typed;
    EXPECT_EQ(answers.shown().size(), each.answers.size()) << each.typed;
  }
}

TEST_F(PanelCaptionEdges, WithoutACaptionNumbersAreCheckedAndNotStored) {
  const std::string before = document();
  AlertAnswers answers({kNo});
  type([panel_ txtInTime], "250");
  type([panel_ txtStayTime], "12a");
  type([panel_ txtCaption], "typed");
  EXPECT_EQ(textOf([panel_ txtInTime]), "200");
  EXPECT_EQ(textOf([panel_ txtStayTime]), "12");
  EXPECT_EQ(answers.shown().size(), 1U);
  EXPECT_EQ(document(), before);
  EXPECT_EQ(newSaves(), 0);
}

TEST_F(PanelCaptionEdges, AddingTakesFieldsAsTheyStandAndAsksNothing) {
  AlertAnswers answers;
  [[panel_ txtCaption] setStringValue:@"new"];
  [[panel_ txtInTime] setStringValue:@"0"];
  [[panel_ txtStayTime] setStringValue:@"999x"];
  [panel_ onContentAdd:nil];
  EXPECT_TRUE(answers.shown().empty());
  EXPECT_EQ(savedValue(0, 2, "In_Time"), "0");
  EXPECT_EQ(savedValue(0, 2, "Stay_Time"), "999x");
}

TEST_F(PanelCaptionEdges, AddingWithComboBoxesWithoutASelectionTakesTheFirstItems) {
  for (NSComboBox *combo in @[
         [panel_ comAlign], [panel_ comTextAlign], [panel_ comTextAnimation],
         [panel_ comStartDirection]
       ])
    deselect(combo);
  [[panel_ txtCaption] setStringValue:@"new"];
  [panel_ onContentAdd:nil];
  EXPECT_EQ(savedValue(0, 2, "Align"), "TL");
  EXPECT_EQ(savedValue(0, 2, "Text_Align"), "0");
  EXPECT_EQ(savedValue(0, 2, "Text_Animation_LetterByLetter"), "0");
  EXPECT_EQ(savedValue(0, 2, "Animation_Start_Direction"), "0");
}

TEST_F(PanelCaptionEdges, AddingKeepsTheShownRowInMindAndGivesTheSlideANewArray) {
  selectCaption(1);
  NSMutableArray *before = [[ownCaptions() retain] autorelease];
  [[panel_ txtCaption] setStringValue:@"new"];
  [panel_ onContentAdd:nil];
  EXPECT_EQ(selectContentIndex(), 1);
  EXPECT_NE(ownCaptions(), before);
  EXPECT_TRUE([ownCaptions() isEqual:[captions() list]]);
  EXPECT_EQ(newSaves(), 1);
}

TEST_F(PanelCaptionEdges, SavingAndRemovingWithoutACaptionDoNothing) {
  const std::string before = document();
  AlertAnswers answers;
  [[panel_ txtCaption] setStringValue:@"typed"];
  [panel_ onContentSave:nil];
  [panel_ onContentRemove:nil];
  [panel_ onTypeButtonChange:[panel_ comAlign]];
  EXPECT_EQ(document(), before);
  EXPECT_EQ(newSaves(), 0);
  EXPECT_TRUE(answers.shown().empty());
}

TEST_F(PanelCaptionEdges, SavingAnEmptyCaptionIsNotQuestioned) {
  selectCaption(0);
  AlertAnswers answers;
  [[panel_ txtCaption] setStringValue:@""];
  [panel_ onContentSave:nil];
  EXPECT_TRUE(answers.shown().empty());
  EXPECT_EQ(savedValue(0, 0, "text"), "");
  EXPECT_EQ(newSaves(), 1);
}

TEST_F(PanelCaptionEdges, EveryComboBoxStoresItsOwnValue) {
  selectCaption(0);
  const struct {
    NSComboBox *combo;
    const char *key;
  } indexed[] = {{[panel_ comTextAlign], "Text_Align"},
                 {[panel_ comTextAnimation], "Text_Animation_LetterByLetter"},
                 {[panel_ comStartDirection], "Animation_Start_Direction"}};
  for (const auto &each : indexed) {
    [each.combo selectItemAtIndex:1];
    [panel_ onTypeButtonChange:each.combo];
    EXPECT_EQ(savedValue(0, 0, each.key), "1") << each.key;
    deselect(each.combo);
    [panel_ onTypeButtonChange:each.combo];
    EXPECT_EQ(savedValue(0, 0, each.key), "-1") << each.key;
  }
  const char *const codes[] = {"TL", "TC", "TR", "CL", "C", "CR", "BL", "BC", "BR"};
  for (NSInteger i = 0; i < 9; ++i) {
    [[panel_ comAlign] selectItemAtIndex:i];
    [panel_ onTypeButtonChange:[panel_ comAlign]];
    EXPECT_EQ(savedValue(0, 0, "Align"), codes[i]);
  }
}

TEST_F(PanelCaptionEdges, AnotherSenderChangesNothingAndSaves) {
  selectCaption(0);
  NSDictionary *before = [[[[captions() list] objectAtIndex:0] copy] autorelease];
  [panel_ onTypeButtonChange:[panel_ btnAdd]];
  EXPECT_TRUE([[[captions() list] objectAtIndex:0] isEqual:before]);
  EXPECT_EQ(newSaves(), 1);
}

TEST_F(PanelCaptionEdges, AColourThatIsNoneShowsAsBlack) {
  [[[captions() list] objectAtIndex:1] setObject:@"#nothing" forKey:@"color"];
  selectCaption(1);
  NSColor *color = [[[[panel_ btnTextColor] cell] backgroundColor]
      colorUsingColorSpaceName:NSCalibratedRGBColorSpace];
  EXPECT_EQ([color redComponent], 0);
  EXPECT_EQ([color greenComponent], 0);
  EXPECT_EQ([color blueComponent], 0);
}

TEST_F(PanelCaptionEdges, SavingAPureRedCaptionWritesTheSameColour) {
  selectCaption(0);
  [panel_ onContentSave:nil];
  EXPECT_EQ(savedValue(0, 0, "color"), "#FF0000");
}

TEST_F(PanelCaptionEdges, WhatIsOfNoConcernIsPassedOver) {
  selectCaption(0);
  const std::string before = document();
  NSTextField *other = [[[NSTextField alloc] initWithFrame:NSMakeRect(0, 0, 50, 20)] autorelease];
  type(other, "250");
  [[panel_ txtCaption] setStringValue:@"unsaved"];
  [panel_
      tableViewSelectionDidChange:[NSNotification
                                      notificationWithName:NSTableViewSelectionDidChangeNotification
                                                    object:other]];
  EXPECT_EQ(textOf([panel_ txtCaption]), "unsaved");
  EXPECT_EQ(document(), before);
  EXPECT_EQ(newSaves(), 0);
}

TEST_F(PanelCaptionEdges, ALoneSurrogateNeverStopsLaterSaves) {
  selectCaption(0);
  // As an editor leaves it that deletes half a character.
  NSMutableString *lone = [NSMutableString stringWithString:string("a\xF0\x9F\x98\x80z")];
  [lone deleteCharactersInRange:NSMakeRange(2, 1)];
  [[panel_ txtCaption] setStringValue:lone];
  [panel_
      controlTextDidChange:[NSNotification notificationWithName:NSControlTextDidChangeNotification
                                                         object:[panel_ txtCaption]]];
  EXPECT_EQ(savedValue(0, 0, "text"), "a\xEF\xBF\xBDz");
  selectCaption(1);
  type([panel_ txtCaption], "still saved");
  EXPECT_EQ(savedValue(0, 1, "text"), "still saved");
}

TEST_F(PanelCaptionEdges, TheTemplateTakesTheLastCaptionElement) {
  XMLElement *slide = [XMLElement
      elementWithXMLString:
          @"<slide Background_image='b'><text a='1' text='attribute'><other/><text><![CDATA[<b>"
           "<font size='5' color='#1'>first</font></b>]]></text><text>not &lt; markup</text><text>"
           "<![CDATA[<b><font size='6' color='#2'>last</font></b>]]></text></text><text a='2'/>"
           "</slide>"];
  EXPECT_TRUE([[panel_ getTextDictTemplate:slide] isEqual:(@{
                                                    @"Background_image" : @"b",
                                                    @"a" : @"1",
                                                    @"text" : @"last",
                                                    @"size" : @"6",
                                                    @"color" : @"#2"
                                                  })]);
}

TEST_F(PanelCaptionEdges, ATemplateThatBeginsWithSomethingElseGivesTheFileOnly) {
  XMLElement *slide = [XMLElement
      elementWithXMLString:@"<slide Background_image='b'><other a='1'/><text a='2'/></slide>"];
  EXPECT_TRUE([[panel_ getTextDictTemplate:slide] isEqual:(@{@"Background_image" : @"b"})]);
}
