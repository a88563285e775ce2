// The content editor's words in another language. In a program of its own: the strings are read
// once.
#import "panel_fixture.h"

#import "Locale.h"
#import "support/alerts.h"
#import "support/before_application.h"
#import "support/open_panel.h"

using namespace vireonix::test;

void vireonix::test::beforeApplication() {
  @autoreleasepool {
    setDefaultLanguageCode(@"de");
    setDefaultBundlePath(@VIREONIX_BUNDLE);
    loadAppString(@"Attention:", nil);
  }
}

namespace {

class PanelLanguage : public PanelTest {
protected:
  PanelLanguage() {
    open(documentMarkup(slideMarkup("1.jpg", captionMarkup("one"))));
    selectSlide(0);
    selectCaption(0);
  }
};

} // namespace

TEST_F(PanelLanguage, TheQuestionsAreTranslated) {
  AlertAnswers answers;
  type([panel_ txtInTime], "201");
  type([panel_ txtStayTime], "201");
  type([panel_ txtTextSize], "61");
  ASSERT_EQ(answers.shown().size(), 3U);
  for (const ShownAlert &alert : answers.shown()) {
    EXPECT_EQ(alert.message, "Achtung:");
    EXPECT_EQ(alert.buttons, (std::vector<std::string>{"YES", "NO"}));
  }
  EXPECT_NE(answers.shown()[0].information.find("0 bis 200"), std::string::npos);
  EXPECT_NE(answers.shown()[1].information.find("0 bis 200"), std::string::npos);
  EXPECT_NE(answers.shown()[0].information, answers.shown()[1].information);
  EXPECT_NE(answers.shown()[2].information.find("10 bis 60"), std::string::npos);
}

TEST_F(PanelLanguage, TheWarningIsTranslated) {
  AlertAnswers answers;
  [[panel_ txtCaption] setStringValue:@""];
  [panel_ onContentAdd:nil];
  ASSERT_EQ(answers.shown().size(), 1U);
  EXPECT_EQ(answers.shown()[0].message, "Warnung:");
  EXPECT_EQ(answers.shown()[0].information.find("The caption"), std::string::npos);
  EXPECT_EQ(answers.shown()[0].buttons, std::vector<std::string>{"OK"});
}

TEST_F(PanelLanguage, TheOpenPanelsTitleIsTranslated) {
  const OpenPanelAnswer answer(NSFileHandlingPanelCancelButton, "/");
  [panel_ openFile];
  NSString *title = [answer.panel() title];
  EXPECT_TRUE([title hasSuffix:@"(*.jpg; *.png; *.gif; *.swf)"]);
  EXPECT_FALSE([title hasPrefix:@"Select"]);
}
