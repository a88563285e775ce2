#import "Class/Log/LogAlert.h"

#import "support/alerts.h"
#import "support/background_command.h"

#include <gtest/gtest.h>

using vireonix::test::AlertAnswers;
using vireonix::test::BackgroundCommand;

namespace {

using Texts = std::vector<std::string>;

// Presses a key once the alert has the keyboard.
constexpr const char *kPressKey = R"sh(
  for i in $(seq 600); do
    [ "$(xdotool getwindowfocus getwindowname 2>/dev/null)" = Alert ] && break
    sleep 0.05
  done
  xdotool key )sh";

BOOL answerWithKey(const char *key, BOOL (*ask)()) {
  const BackgroundCommand press(std::string(kPressKey) + key);
  return ask();
}

BOOL askYesNo() {
  return [LogAlert askYesNo:@"Attention:" Text:@"Really?"];
}

} // namespace

TEST(LogAlert, AMessageHasOneButton) {
  const AlertAnswers answers;
  [LogAlert showMessage:@"Warming:" Text:@"Something happened."];
  ASSERT_EQ(answers.shown().size(), 1U);
  EXPECT_EQ(answers.shown()[0].message, "Warming:");
  EXPECT_EQ(answers.shown()[0].information, "Something happened.");
  EXPECT_EQ(answers.shown()[0].buttons, Texts{"OK"});
}

TEST(LogAlert, OnlyTheSecondButtonMeansNo) {
  const AlertAnswers answers(
      {NSAlertFirstButtonReturn, NSAlertSecondButtonReturn, NSAlertThirdButtonReturn, -1000});
  EXPECT_TRUE([LogAlert askYesNo:@"a" Text:@"b"]);
  EXPECT_FALSE([LogAlert askYesNo:@"a" Text:@"b"]);
  EXPECT_TRUE([LogAlert askYesNo:@"a" Text:@"b"]);
  EXPECT_TRUE([LogAlert askYesNo:@"a" Text:@"b"]);
  EXPECT_EQ(answers.shown()[0].buttons, (Texts{"YES", "NO"}));
}

TEST(LogAlert, OnlyTheSecondButtonMeansCancel) {
  const AlertAnswers answers({NSAlertFirstButtonReturn, NSAlertSecondButtonReturn, -1000});
  EXPECT_TRUE([LogAlert askOKCancel:@"a" Text:@""]);
  EXPECT_FALSE([LogAlert askOKCancel:@"a" Text:@""]);
  EXPECT_TRUE([LogAlert askOKCancel:@"a" Text:@""]);
  EXPECT_EQ(answers.shown()[0].buttons, (Texts{"OK", "Cancel"}));
}

TEST(LogAlert, ReturnAnswersYesInARealAlert) {
  EXPECT_TRUE(answerWithKey("Return", askYesNo));
}

TEST(LogAlert, EscapeAnswersNoInARealAlert) {
  EXPECT_FALSE(answerWithKey("Escape", askYesNo));
}
