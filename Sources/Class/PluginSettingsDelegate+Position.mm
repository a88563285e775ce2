#import "Class/PluginSettingsDelegate.h"

#import "Bridge/text.h"
#import "Class/DetachedCall.h"
#import "Class/FieldText.h"
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
// answer is between two run loops or busy; the record is then saved as it stands.
static const NSTimeInterval kMainThreadPatience = 0.25;

static const NSInteger kAsked = 0;
static const NSInteger kAnswered = 1;

// The record as it was on the main thread when a save asked for it.
@interface PositionSnapshot : NSConditionLock {
@public
  core::Position position;
  uint64_t number; // counts up with time
}
@end

@implementation PositionSnapshot
@end

static void showNumber(NSTextField *field, double number) {
  showTextInField(field, bridge::string(core::oneDecimalText(number)));
}

@implementation PluginSettingsDelegate (Position)

// Takes the selected layer into the record, as every save does.
- (void)fillSnapshot:(PositionSnapshot *)snapshot {
  [ptRect setLayer:static_cast<int32_t>([matLayer selectedTag])];
  [snapshot lock];
  snapshot->position = [ptRect position];
  snapshot->number = ++snapshotsTaken;
  [snapshot unlockWithCondition:kAnswered];
}

- (PositionSnapshot *)filledSnapshot {
  PositionSnapshot *snapshot = [[[PositionSnapshot alloc] initWithCondition:kAsked] autorelease];
  [self fillSnapshot:snapshot];
  return snapshot;
}

- (PositionSnapshot *)snapshotFromAnyThread {
  if ([NSThread isMainThread])
    return [self filledSnapshot];
  PositionSnapshot *snapshot = [[[PositionSnapshot alloc] initWithCondition:kAsked] autorelease];
  [self performSelectorOnMainThread:@selector(fillSnapshot:) withObject:snapshot waitUntilDone:NO
                              modes:mainThreadModes()];
  NSDate *limit = [NSDate dateWithTimeIntervalSinceNow:kMainThreadPatience];
  if (![snapshot lockWhenCondition:kAnswered beforeDate:limit])
    return [self filledSnapshot];
  [snapshot unlock];
  return snapshot;
}

- (void)saveGlobalSettings {
  // The pool is for threads that were started for this alone.
  @autoreleasepool {
    NSString *folder = [self workSpace];
    if ([[NSFileManager defaultManager] fileExistsAtPath:folder]) {
      PositionSnapshot *snapshot = [self snapshotFromAnyThread];
      [self saveSnapshot:snapshot toFile:[folder stringByAppendingPathComponent:kSettingsName]];
    }
    [self setIsChange:YES];
  }
}

// Of two saves the one that asked later is what stays, whichever thread is faster.
- (void)saveSnapshot:(PositionSnapshot *)snapshot toFile:(NSString *)path {
  @synchronized(self) {
    const BOOL isTooLate = isReverted || (isSavedForGood && ![NSThread isMainThread]);
    if (isTooLate || snapshot->number <= snapshotSaved)
      return;
    snapshotSaved = snapshot->number;
    PositionRect *record = [[[PositionRect alloc] init] autorelease];
    [record setPosition:snapshot->position];
    [record saveToFile:path];
  }
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
  @autoreleasepool {
    if ([NSThread isMainThread])
      [self showMargins];
    else
      [self performSelectorOnMainThread:@selector(showDraggedMargins) withObject:nil
                          waitUntilDone:NO
                                  modes:mainThreadModes()];
  }
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
  const auto *const found = std::ranges::find(fields, edited);
  if (edited == nil || found == fields.end())
    return;
  NSString *kept = [self checkFloatValueString:textOfField(edited)];
  showTextInField(edited, kept);
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
