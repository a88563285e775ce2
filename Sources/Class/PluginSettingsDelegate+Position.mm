#import "Class/PluginSettingsDelegate.h"

#import "Bridge/text.h"
#import "Class/DetachedCall.h"
#import "Class/Mode/UtilityFunction.h"
#import "Class/PositionRect.h"
#import "Class/PositionView.h"

#include "Core/number_text.h"
#include "Core/position.h"

#include <algorithm>
#include <array>
#include <cstdio>

using namespace vireonix;

static NSString *const kSettingsName = @"settings.dat";
static NSString *const kDefaultSettingsName = @"defaultsettings.dat";
static NSString *const kBundledDefaultSettings = @"Contents/Resources/data/defaultsettings.dat";

// How long a thread that saves waits for the main thread, in seconds. A main thread that does not
// answer is between two run loops, so nobody is changing what it would have answered.
static const NSTimeInterval kMainThreadPatience = 0.25;

enum : NSInteger { kAsked, kAnswered };

// Carries the record from the main thread to a thread that saves.
@interface PositionQuestion : NSConditionLock {
@public
  core::Position position;
}
@end

@implementation PositionQuestion
@end

// What a field holds, without ending an editing session in it.
static NSString *textOf(NSTextField *field) {
  NSText *editor = [field currentEditor];
  return [NSString stringWithString:editor != nil ? [editor string] : [field stringValue]];
}

static void showText(NSTextField *field, NSString *text) {
  NSText *editor = [field currentEditor];
  if (editor == nil)
    [field setStringValue:text];
  else if (![[editor string] isEqualToString:text])
    [editor setString:text];
}

static void showNumber(NSTextField *field, double number) {
  showText(field, bridge::string(core::oneDecimalText(number)));
}

// Cuts the end of a field's text off; the insertion point stays where it is in what remains.
static void cutText(NSTextField *field, NSString *text, NSString *kept) {
  NSText *editor = [field currentEditor];
  if (editor == nil) {
    [field setStringValue:kept];
    return;
  }
  const NSUInteger length = [kept length];
  if (length == [text length])
    return;
  NSRange selection = [editor selectedRange];
  selection.location = MIN(selection.location, length);
  selection.length = MIN(selection.length, length - selection.location);
  [editor replaceCharactersInRange:NSMakeRange(length, [text length] - length) withString:@""];
  [editor setSelectedRange:selection];
}

@implementation PluginSettingsDelegate (Position)

// Takes the selected layer into the record, as every save does.
- (core::Position)positionToSave {
  [ptRect setLayer:static_cast<int32_t>([matLayer selectedTag])];
  return [ptRect position];
}

- (void)answerPosition:(PositionQuestion *)question {
  [question lock];
  question->position = [self positionToSave];
  [question unlockWithCondition:kAnswered];
}

- (core::Position)positionToSaveFromAnyThread {
  if ([NSThread isMainThread])
    return [self positionToSave];
  PositionQuestion *question = [[[PositionQuestion alloc] initWithCondition:kAsked] autorelease];
  [self performSelectorOnMainThread:@selector(answerPosition:) withObject:question waitUntilDone:NO
                              modes:mainThreadModes()];
  NSDate *limit = [NSDate dateWithTimeIntervalSinceNow:kMainThreadPatience];
  if (![question lockWhenCondition:kAnswered beforeDate:limit])
    return [self positionToSave];
  [question unlock];
  return question->position;
}

- (void)saveGlobalSettings {
  NSString *folder = [self workSpace];
  if ([[NSFileManager defaultManager] fileExistsAtPath:folder]) {
    // One at a time, so that of two saves the later one is what stays.
    @synchronized(self) {
      if (isReverted)
        return;
      PositionRect *record = [[[PositionRect alloc] init] autorelease];
      [record setPosition:[self positionToSaveFromAnyThread]];
      [record saveToFile:[folder stringByAppendingPathComponent:kSettingsName]];
    }
  }
  [self setIsChange:YES];
}

- (void)loadWorkSpaceSettings {
  if ([self workSpace] == nil)
    return;
  [self loadSettingsFromFile:bridge::pathString(
                                 core::positionFileOf(bridge::path([self workSpace])))];
}

- (void)loadSettingsFromFile:(NSString *)path {
  [ptRect setPosition:core::readPositionFile(bridge::path(path))];
  [self makePositionView];
  [positionView loadPositionRect:ptRect];
  [self updatePositionFields];
  [sldTrans setDoubleValue:[ptRect transparency]];
  showNumber(txtTransparency, [ptRect transparency]);
  [matLayer selectCellWithTag:[ptRect layer]];
}

// Puts the canvas in its placeholder's place, once.
- (void)makePositionView {
  if (positionView != nil)
    return;
  const NSRect frame = positionDrawView != nil ? [positionDrawView frame] : NSZeroRect;
  positionView = [[PositionView alloc] initWithFrame:frame];
  if (positionDrawView != nil)
    [positionView setAutoresizingMask:[positionDrawView autoresizingMask]];
  [[positionDrawView superview] addSubview:positionView];
  [positionDrawView removeFromSuperview];
  positionDrawView = nil;
  [positionView setOwer:self];
}

- (void)updatePositionFields {
  if ([NSThread isMainThread])
    [self showMargins];
  else
    [self performSelectorOnMainThread:@selector(showDraggedMargins) withObject:nil waitUntilDone:NO
                                modes:mainThreadModes()];
}

// The window may have closed since the drag step that this belongs to.
- (void)showDraggedMargins {
  if (!hasEnded)
    [self showMargins];
}

- (void)showMargins {
  PositionRect *shown = [positionView positionRect];
  if (shown == nil)
    return;
  if (shown != ptRect) {
    [ptRect release];
    ptRect = [shown retain];
  }
  showNumber(txtLeft, [ptRect left]);
  showNumber(txtTop, [ptRect top]);
  showNumber(txtRight, [ptRect right]);
  showNumber(txtBottom, [ptRect bottom]);
}

- (void)controlTextDidChange:(NSNotification *)notification {
  const std::array fields = {txtLeft, txtTop, txtRight, txtBottom, txtTransparency};
  using Setter = void (*)(PositionRect *, float);
  static constexpr std::array<Setter, fields.size()> kSetters = {
      [](PositionRect *record, float value) { [record setLeft:value]; },
      [](PositionRect *record, float value) { [record setTop:value]; },
      [](PositionRect *record, float value) { [record setRight:value]; },
      [](PositionRect *record, float value) { [record setBottom:value]; },
      [](PositionRect *record, float value) { [record setTransparency:value]; },
  };
  NSTextField *edited = [notification object];
  const auto found = std::find(fields.begin(), fields.end(), edited);
  if (edited == nil || found == fields.end())
    return;
  NSString *text = textOf(edited);
  NSString *kept = [self checkFloatValueString:text];
  cutText(edited, text, kept);
  kSetters.at(static_cast<size_t>(found - fields.begin()))(ptRect,
                                                           core::floatValue(bridge::utf8(kept)));
  [positionView loadPositionRect:ptRect];
  if (edited == txtTransparency)
    [sldTrans setDoubleValue:core::doubleValue(bridge::utf8(kept))];
  else
    [positionView setNeedsDisplay:YES];
}

- (NSString *)checkFloatValueString:(NSString *)text {
  return [UtilityFunction checkFloatValueStringFrom:text];
}

- (IBAction)onTransparencyChange:(id)sender {
  if (sldTrans == nil)
    return;
  const double value = [sldTrans doubleValue];
  showNumber(txtTransparency, value);
  [ptRect setTransparency:static_cast<float>(value)];
  [positionView loadPositionRect:ptRect];
}

- (IBAction)onDefault:(id)sender {
  NSFileManager *files = [NSFileManager defaultManager];
  NSString *path = [[self bundlePath] stringByAppendingPathComponent:kBundledDefaultSettings];
  if (![files fileExistsAtPath:path])
    path = [[self workSpace] stringByAppendingPathComponent:kDefaultSettingsName];
  if (![files fileExistsAtPath:path]) {
    std::puts("defaultsettings.dat not found!");
    std::fflush(stdout);
    return;
  }
  [self loadSettingsFromFile:path];
  [self setIsChange:YES];
}

@end
