// Choosing a caption's colour in the shared colour panel.
#import "panel_fixture.h"

#import "support/alerts.h"
#import "support/run_loop.h"

using vireonix::test::AlertAnswers;
using vireonix::test::captionMarkup;
using vireonix::test::documentMarkup;
using vireonix::test::PanelTest;
using vireonix::test::pumpUntil;
using vireonix::test::slideMarkup;

namespace {

NSArray *sessionModes() {
  return @[ NSModalPanelRunLoopMode ];
}

class PanelColor : public PanelTest {
protected:
  PanelColor() {
    open(documentMarkup(slideMarkup("1.jpg", captionMarkup("one") + captionMarkup("two"))));
    selectSlide(0);
    [[[panel_ btnTextColor] cell] setBackgroundColor:[NSColor redColor]];
  }

  static NSColor *blue() { return [NSColor colorWithCalibratedRed:0 green:0 blue:1 alpha:1]; }

  // Once the colour panel is open: blue is chosen, then `object` gets a message.
  void afterChoosingBlue(id object, SEL message, id argument) {
    [colors_ performSelector:@selector(setColor:) withObject:blue() afterDelay:0.1
                     inModes:sessionModes()];
    [object performSelector:message withObject:argument afterDelay:0.2 inModes:sessionModes()];
  }

  void postOnceOpen(NSString *name) {
    NSNotification *notification = [NSNotification notificationWithName:name object:NSApp];
    afterChoosingBlue([NSNotificationCenter defaultCenter], @selector(postNotification:),
                      notification);
  }

  void choose() { [panel_ onColorSelect:[panel_ btnTextColor]]; }

  // The button's colour as the document would hold it.
  std::string buttonColor() {
    NSColor *color = [[[[panel_ btnTextColor] cell] backgroundColor]
        colorUsingColorSpaceName:NSCalibratedRGBColorSpace];
    char text[8];
    snprintf(text, sizeof text, "#%02X%02X%02X", int([color redComponent] * 255),
             int([color greenComponent] * 255), int([color blueComponent] * 255));
    return text;
  }

  NSColorPanel *colors_ = [NSColorPanel sharedColorPanel];
};

} // namespace

TEST_F(PanelColor, ItIsStoredWhenThePanelCloses) {
  selectCaption(0);
  afterChoosingBlue(colors_, @selector(close), nil);
  choose();
  EXPECT_EQ(buttonColor(), "#0000FF");
  EXPECT_EQ(savedValue(0, 0, "color"), "#0000FF");
  EXPECT_EQ(savedValue(0, 1, "color"), "#FF0000");
  EXPECT_EQ([colors_ delegate], nil);
  EXPECT_FALSE([colors_ isVisible]);
  EXPECT_EQ([NSApp modalWindow], nil);
}

TEST_F(PanelColor, ThePanelStartsWithTheButtonsColour) {
  selectCaption(0);
  [colors_ setColor:blue()];
  [colors_ performSelector:@selector(close) withObject:nil afterDelay:0.1 inModes:sessionModes()];
  choose();
  EXPECT_EQ(buttonColor(), "#FF0000");
  EXPECT_EQ(savedValue(0, 0, "color"), "#FF0000");
}

TEST_F(PanelColor, WithoutACaptionItChangesTheButtonOnly) {
  const std::string before = document();
  afterChoosingBlue(colors_, @selector(close), nil);
  choose();
  EXPECT_EQ(buttonColor(), "#0000FF");
  EXPECT_EQ(document(), before);
  EXPECT_EQ([owner_ saves], 0);
}

TEST_F(PanelColor, AnotherSendersColourIsShownByItAndTheButtonsIsStored) {
  selectCaption(0);
  NSButton *other = [[[NSButton alloc] initWithFrame:NSMakeRect(0, 0, 20, 20)] autorelease];
  afterChoosingBlue(colors_, @selector(close), nil);
  [panel_ onColorSelect:other];
  EXPECT_TRUE([[[other cell] backgroundColor] isEqual:blue()]);
  EXPECT_EQ(savedValue(0, 0, "color"), "#FF0000");
  EXPECT_TRUE(pumpUntil([this] { return [owner_ saves] == 1; }));
}

TEST_F(PanelColor, LeavingTheApplicationEndsTheChoice) {
  selectCaption(0);
  [NSApp activateIgnoringOtherApps:YES];
  afterChoosingBlue(NSApp, @selector(deactivate), nil);
  choose();
  [NSApp activateIgnoringOtherApps:YES];
  EXPECT_EQ(savedValue(0, 0, "color"), "#0000FF");
  EXPECT_FALSE([colors_ isVisible]);
  EXPECT_EQ([colors_ delegate], nil);
}

TEST_F(PanelColor, AMomentWithoutTheFocusDoesNotEndTheChoice) {
  selectCaption(0);
  [NSApp activateIgnoringOtherApps:YES];
  [[NSNotificationCenter defaultCenter]
      performSelector:@selector(postNotification:)
           withObject:[NSNotification notificationWithName:NSApplicationDidResignActiveNotification
                                                    object:NSApp]
           afterDelay:0.05
              inModes:sessionModes()];
  [colors_ performSelector:@selector(setColor:) withObject:blue() afterDelay:0.6
                   inModes:sessionModes()];
  [colors_ performSelector:@selector(close) withObject:nil afterDelay:0.7 inModes:sessionModes()];
  choose();
  EXPECT_EQ(savedValue(0, 0, "color"), "#0000FF");
}

TEST_F(PanelColor, EndingTheApplicationEndsTheChoice) {
  selectCaption(0);
  postOnceOpen(NSApplicationWillTerminateNotification);
  choose();
  EXPECT_EQ(savedValue(0, 0, "color"), "#0000FF");
  EXPECT_FALSE([colors_ isVisible]);
}

TEST_F(PanelColor, ASecondChoiceDuringTheFirstDoesNothing) {
  selectCaption(0);
  [panel_ performSelector:@selector(onColorSelect:) withObject:[panel_ btnTextColor] afterDelay:0.05
                  inModes:sessionModes()];
  afterChoosingBlue(colors_, @selector(close), nil);
  choose();
  EXPECT_EQ(savedValue(0, 0, "color"), "#0000FF");
  EXPECT_TRUE(pumpUntil([this] { return [owner_ saves] == 1; }));
  EXPECT_EQ([NSApp modalWindow], nil);
}

TEST_F(PanelColor, OneChoiceAfterAnotherWorks) {
  selectCaption(0);
  for (int i = 0; i < 2; ++i) {
    [[[panel_ btnTextColor] cell] setBackgroundColor:[NSColor redColor]];
    afterChoosingBlue(colors_, @selector(close), nil);
    choose();
    EXPECT_EQ(buttonColor(), "#0000FF");
  }
  EXPECT_EQ(savedValue(0, 0, "color"), "#0000FF");
}

TEST_F(PanelColor, ThePanelMayGoDuringTheChoice) {
  selectCaption(0);
  [panel_ performSelector:@selector(removeFromSuperview) withObject:nil afterDelay:0.05
                  inModes:sessionModes()];
  PrivateView *panel = panel_;
  panel_ = nil;
  [panel performSelector:@selector(release) withObject:nil afterDelay:0.1 inModes:sessionModes()];
  [panel performSelector:@selector(endColorChoice) withObject:nil afterDelay:0.3
                 inModes:sessionModes()];
  [panel onColorSelect:[panel btnTextColor]];
  EXPECT_FALSE([colors_ isVisible]);
  EXPECT_EQ([colors_ delegate], nil);
}

TEST_F(PanelColor, AFieldThatHasTheKeyboardDoesNotTakeItForTyping) {
  [[[captions() list] objectAtIndex:0] setObject:@"0" forKey:@"In_Time"];
  selectCaption(0);
  [window_ makeFirstResponder:[panel_ txtInTime]];
  const AlertAnswers answers;
  afterChoosingBlue(colors_, @selector(close), nil);
  choose();
  EXPECT_TRUE(answers.shown().empty()) << "asked about a number that nobody typed";
  EXPECT_EQ(textOf([panel_ txtInTime]), "0");
  EXPECT_EQ(savedValue(0, 0, "color"), "#0000FF");
}
