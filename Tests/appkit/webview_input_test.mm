// What a person does with the page: pointer, wheel and keys, synthesised and from the display.
#import "appkit/webview_support.h"
#import "support/mouse.h"
#import "support/run_loop.h"

#include <cstdlib>

using namespace vireonix::test;

namespace {

// What the page heard, in `window.heard`.
const char *const kListen = R"(<script>
window.heard = '';
for (const name of ['mousedown','mouseup','click','dblclick','auxclick','contextmenu'])
  addEventListener(name, e => { heard += name + e.button + ' '; });
addEventListener('mouseover', e => { heard += 'over ' });
document.documentElement.addEventListener('mouseleave', e => { heard += 'leave ' });
addEventListener('keydown', e => { heard += (e.ctrlKey?'C':'') + (e.altKey?'A':'') +
  (e.shiftKey?'S':'') + (e.metaKey?'M':'') + e.key + ' ' });
</script>)";

} // namespace

class WebViewInput : public WebViewTest {
protected:
  /// Runs xdotool and hands its events to the window; true when it could be run.
  static bool xdotool(const std::string &arguments) {
    const bool ran = std::system(("xdotool " + arguments).c_str()) == 0;
    pumpEventsFor(0.15);
    return ran;
  }

  void pointAt(double x, double y) {
    moveMouse(view, NSMakePoint(x, NSMaxY([view bounds]) - y));
    pumpEventsFor(0.15);
  }

  NSEvent *wheel(double deltaX, double deltaY) {
    return [NSEvent mouseEventWithType:NSScrollWheel location:windowPoint(50, 50) modifierFlags:0
                             timestamp:0
                          windowNumber:[window windowNumber]
                               context:[window graphicsContext]
                           eventNumber:0
                            clickCount:1
                              pressure:1
                          buttonNumber:0
                                deltaX:deltaX
                                deltaY:deltaY
                                deltaZ:0];
  }
};

TEST_F(WebViewInput, AClickIsHeardOnceWithItsButton) {
  show(kListen);
  click(50, 50);
  EXPECT_TRUE(becomes("heard.replace('over ','')", "mousedown0 mouseup0 click0 "));
}

TEST_F(WebViewInput, TheSecondClickIsADoubleClick) {
  show(kListen);
  click(50, 50, 1);
  click(50, 50, 2);
  EXPECT_TRUE(becomes("heard.includes('dblclick0') + ''", "true"));
}

TEST_F(WebViewInput, ALinkFollowsARealClick) {
  page("second.html", "<title>Second</title>");
  show("<a href=second.html style='display:block;width:200px;height:50px'>link</a>");
  pointAt(20, 20);
  ASSERT_TRUE(xdotool("mousedown 1"));
  ASSERT_TRUE(xdotool("mouseup 1"));
  EXPECT_TRUE(becomes("document.title", "Second"));
}

TEST_F(WebViewInput, TheRealPointerEntersHoversAndLeaves) {
  show(std::string(kListen) +
       "<style>#b{width:100px;height:100px;background:#0000ff}#b:hover{background:#ff0000}</style>"
       "<div id=b></div>");
  moveMouseAway();
  ASSERT_TRUE(waitForColour(50, 50, "0000ff"));
  pointAt(50, 50);
  EXPECT_TRUE(waitForColour(50, 50, "ff0000"));
  moveMouseAway();
  EXPECT_TRUE(waitForColour(50, 50, "0000ff"));
}

TEST_F(WebViewInput, TheWheelScrolls) {
  show("<div style='width:3000px;height:3000px'></div>");
  [view scrollWheel:wheel(0, -1)];
  ASSERT_TRUE(becomes("(scrollY > 0) + ''", "true"));
  [view scrollWheel:wheel(0, 1)];
  ASSERT_TRUE(becomes("scrollY + ''", "0"));
  [view scrollWheel:wheel(0, -0.25)];
  ASSERT_TRUE(becomes("(scrollY > 0 && scrollY < 30) + ''", "true"));
  [view scrollWheel:wheel(-1, 0)];
  EXPECT_TRUE(becomes("(scrollX > 0) + ''", "true"));
}

TEST_F(WebViewInput, ARealWheelScrolls) {
  show("<div style='width:3000px;height:3000px'></div>");
  pointAt(50, 50);
  ASSERT_TRUE(xdotool("click 5"));
  EXPECT_TRUE(becomes("(scrollY > 0) + ''", "true"));
}

TEST_F(WebViewInput, KeysTypeIntoTheFocusedField) {
  show("<input id=i autofocus>");
  [window makeFirstResponder:view];
  run("document.getElementById('i').focus()");
  for (const char *text : {"a", "B", "\xC3\xA4", "\xE2\x82\xAC", "1"})
    key(text, *text == 'B' ? NSShiftKeyMask : 0);
  EXPECT_TRUE(becomes("i.value", "aB\xC3\xA4\xE2\x82\xAC"
                                 "1"));
  key("\x7f");
  EXPECT_TRUE(becomes("i.value", "aB\xC3\xA4\xE2\x82\xAC"));
}

TEST_F(WebViewInput, FunctionKeysAndModifiersKeepTheirNames) {
  show(kListen);
  [window makeFirstResponder:view];
  const unichar keys[] = {NSLeftArrowFunctionKey,
                          NSF5FunctionKey,
                          NSHomeFunctionKey,
                          NSPageDownFunctionKey,
                          NSDeleteFunctionKey,
                          27,
                          13};
  for (const unichar character : keys)
    key([[NSString stringWithCharacters:&character length:1] UTF8String]);
  EXPECT_TRUE(becomes("heard", "ArrowLeft F5 Home PageDown Delete Escape Enter "));
  run("heard = ''");
  key("x", NSControlKeyMask);
  key("y", NSAlternateKeyMask);
  EXPECT_TRUE(becomes("heard", "Cx Ay "));
}

TEST_F(WebViewInput, RealKeysReachThePageThatWasClicked) {
  show("<input id=i style='width:200px;height:50px'>");
  pointAt(50, 20);
  ASSERT_TRUE(xdotool("mousedown 1"));
  ASSERT_TRUE(xdotool("mouseup 1"));
  ASSERT_TRUE(becomes("document.activeElement.id", "i"));
  ASSERT_TRUE(xdotool("type --delay 30 'Hi 5'"));
  EXPECT_TRUE(becomes("i.value", "Hi 5"));
  ASSERT_TRUE(xdotool("key BackSpace"));
  EXPECT_TRUE(becomes("i.value", "Hi "));
}

TEST_F(WebViewInput, TabGoesThroughThePageAndLeavesItAtItsEnd) {
  NSTextField *field =
      [[[NSTextField alloc] initWithFrame:NSMakeRect(20, 350, 100, 24)] autorelease];
  [[window contentView] addSubview:field];
  [view setNextKeyView:field];
  [field setNextKeyView:view];
  show("<input id=i><input id=j>");
  [window makeFirstResponder:view];
  key("\t");
  ASSERT_TRUE(becomes("document.activeElement.id", "i"));
  key("\t");
  ASSERT_TRUE(becomes("document.activeElement.id", "j"));
  EXPECT_EQ([window firstResponder], view);
  key("\t");
  EXPECT_TRUE(pumpEventsUntil([&] { return [field currentEditor] != nil; }));
}

namespace {

// Two inputs, and which of them has the keyboard.
const char *const kTwoInputs = R"(<input id=i><input id=j><script>
window.where = () => document.hasFocus() ? document.activeElement.id || 'body' : 'nowhere';
</script>)";

} // namespace

class WebViewTab : public WebViewInput {
protected:
  WebViewTab() {
    before_ = addField(20);
    after_ = addField(220);
    [before_ setNextKeyView:view];
    [view setNextKeyView:after_];
    [after_ setNextKeyView:before_];
    show(kTwoInputs);
    [window makeFirstResponder:before_];
  }

  /// What the keyboard acts on: "before", "after", "i", "j", or "body" for no element of the page.
  std::string place() {
    const std::string inPage = run("where()");
    if ([window firstResponder] == view)
      return inPage;
    if ([before_ currentEditor] != nil)
      return "before";
    if ([after_ currentEditor] != nil)
      return "after";
    return "?";
  }

  /// Presses a real key; answers where the keyboard is once that has changed.
  std::string placeAfter(const std::string &key) {
    const std::string start = place();
    if (!xdotool("key " + key))
      return "no xdotool";
    pumpEventsUntil([&] { return place() != start && place() != "body"; }, 2);
    return place();
  }

private:
  NSTextField *addField(CGFloat x) {
    NSTextField *field =
        [[[NSTextField alloc] initWithFrame:NSMakeRect(x, 350, 100, 24)] autorelease];
    [[window contentView] addSubview:field];
    return field;
  }

  NSTextField *before_ = nil;
  NSTextField *after_ = nil;
};

TEST_F(WebViewTab, TheRealTabKeyGoesThroughThePageAgainAndAgain) {
  for (int round = 0; round < 3; ++round)
    for (const char *expected : {"i", "j", "after", "before"})
      EXPECT_EQ(placeAfter("Tab"), expected) << "round " << round;
}

TEST_F(WebViewTab, TheRealTabKeyWithShiftGoesBackThroughThePageAgainAndAgain) {
  for (int round = 0; round < 3; ++round)
    for (const char *expected : {"after", "j", "i", "before"})
      EXPECT_EQ(placeAfter("shift+Tab"), expected) << "round " << round;
}

TEST_F(WebViewTab, ThePageIsPassedByWhenNothingInItTakesTheKeyboard) {
  show("<p>text</p><script>window.where = () => 'body'</script>", "text.html");
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(placeAfter("Tab"), "after") << "round " << round;
    EXPECT_EQ(placeAfter("shift+Tab"), "before") << "round " << round;
  }
}

TEST_F(WebViewTab, TheDirectionCanTurnInThePage) {
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(placeAfter("Tab"), "i") << "round " << round;
    EXPECT_EQ(placeAfter("shift+Tab"), "before") << "round " << round;
    EXPECT_EQ(placeAfter("shift+Tab"), "after") << "round " << round;
    EXPECT_EQ(placeAfter("shift+Tab"), "j") << "round " << round;
    EXPECT_EQ(placeAfter("Tab"), "after") << "round " << round;
    EXPECT_EQ(placeAfter("Tab"), "before") << "round " << round;
  }
}

TEST_F(WebViewInput, ADragInThePageSelectsTextAndDragsNothingOut) {
  show("<div style='font:20px monospace'>some words to select</div>"
       "<a href=x style='position:absolute;top:100px;left:0;width:100px;height:50px'>link</a>");
  [window sendEvent:mouse(NSLeftMouseDown, 5, 10)];
  [window sendEvent:mouse(NSLeftMouseDragged, 60, 10)];
  [window sendEvent:mouse(NSLeftMouseDragged, 120, 10)];
  [window sendEvent:mouse(NSLeftMouseUp, 120, 10)];
  EXPECT_TRUE(becomes("(getSelection().toString().length > 3) + ''", "true"));
  run("window.drags = 0; addEventListener('dragstart', () => { ++drags })");
  [window sendEvent:mouse(NSLeftMouseDown, 20, 110)];
  [window sendEvent:mouse(NSLeftMouseDragged, 60, 130)];
  [window sendEvent:mouse(NSLeftMouseDragged, 150, 160)];
  [window sendEvent:mouse(NSLeftMouseUp, 150, 160)];
  pumpEventsFor(0.2);
  EXPECT_EQ(run("drags + ''"), "0");
}
