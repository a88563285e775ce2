#import "vireonix/PrivateView.h"

#import "Bridge/text.h"
#import "Class/FieldText.h"
#import "Class/Log/LogAlert.h"
#import "Class/Mode/UtilityFunction.h"
#import "Class/TableViewProtocol.h"
#import "Class/XMLElement.h"
#import "Locale.h"
#import "vireonix/PrivateView+SetUp.h"
#import "vireonix/panel_controls.h"
#import "vireonix/slider_records.h"

#include "Core/number_text.h"
#include "Core/slider_document.h"

#include <algorithm>

using namespace vireonix;

namespace slider = vireonix::core::slider;

static NSString *const kCentred = @"C";

namespace {

// How a number that the user types is checked.
struct NumberRule {
  std::string_view key;
  int32_t limit;
  NSString *question;
  NSString *insteadOfZero;
};

const NumberRule kInTimeRule = {slider::kInTime, 200,
                                @"The In-Time value range 0-200 is recommended, Are you insist to "
                                @"use the input value ?",
                                @"0"};
const NumberRule kStayTimeRule = {slider::kStayTime, 200,
                                  @"The Stay-Time value range 0-200 is recommended, Are you insist "
                                  @"to use the input value ?",
                                  @"0"};
const NumberRule kSizeRule = {slider::kSize, 60,
                              @"The text size range 10-60 is recommended, Are you insist to use "
                              @"the input value ?",
                              @"10"};

int32_t intValue(NSString *text) {
  return core::intValue(bridge::utf8(text));
}

bool isOutOfRange(NSString *text, const NumberRule &rule) {
  const int32_t value = intValue(text);
  return ([text length] > 0 && value == 0) || value > rule.limit;
}

NSString *moderated(NSString *text, const NumberRule &rule) {
  const int32_t value = intValue(text);
  if (value > rule.limit)
    return [NSString stringWithFormat:@"%i", rule.limit];
  return value == 0 ? rule.insteadOfZero : text;
}

bool wantsOutOfRange(const NumberRule &rule) {
  return [LogAlert askYesNo:loadAppString(@"Attention:", @"Attention:")
                       Text:loadAppString(rule.question, rule.question)];
}

NSString *indexText(NSInteger index) {
  return [NSString stringWithFormat:@"%i", static_cast<int>(index)];
}

NSInteger selectedItemOrFirst(NSComboBox *combo) {
  return std::max<NSInteger>(0, [combo indexOfSelectedItem]);
}

} // namespace

@implementation PrivateView (TextObjects)

- (NSMutableDictionary *)selectedTextObject {
  const NSInteger row = selectedRow(tbContent, tbContentProtocol);
  return row >= 0 ? [[tbContentProtocol list] objectAtIndex:static_cast<NSUInteger>(row)] : nil;
}

- (NSMutableDictionary *)getTextDictTemplate:(XMLElement *)slide {
  return recordOfTextObject(slider::textObjectDefaults([slide node]));
}

// Gives a record every value that the controls hold.
- (void)takeControlsIntoRecord:(NSMutableDictionary *)record {
  const auto align = static_cast<NSUInteger>(selectedItemOrFirst(comAlign));
  setRecordText(record, slider::kText, textOfField(txtCaption));
  setRecordText(record, slider::kSize, textOfField(txtTextSize));
  setRecordText(record, slider::kColor, colorTextOfButton(btnTextColor));
  setRecordText(record, slider::kStyle, textOfField(comStyle));
  setRecordText(record, slider::kAlign,
                align < [AlignShortCut count] ? [AlignShortCut objectAtIndex:align] : kCentred);
  setRecordText(record, slider::kInTime, textOfField(txtInTime));
  setRecordText(record, slider::kStayTime, textOfField(txtStayTime));
  setRecordText(record, slider::kTextAlign, indexText(selectedItemOrFirst(comTextAlign)));
  setRecordText(record, slider::kTextAnimation, indexText(selectedItemOrFirst(comTextAnimation)));
  setRecordText(record, slider::kStartDirection, indexText(selectedItemOrFirst(comStartDirection)));
  setRecordText(record, slider::kBackgroundImage, textOfField(txtFileName));
}

// Shows the changed list and makes it the slide's own.
- (void)storeTextObjectsInSlide:(NSMutableDictionary *)slide {
  reloadTable(tbContent);
  [slide setObject:[NSMutableArray arrayWithArray:[tbContentProtocol list]] forKey:kTextObjectsKey];
  [self onSave:nil];
}

- (IBAction)onContentAdd:(id)sender {
  NSMutableDictionary *slide = [self selectedSlide];
  if (slide == nil)
    return;
  if ([textOfField(txtCaption) length] == 0) {
    NSString *warning = @"The caption is null, please input the caption first!";
    [LogAlert showMessage:loadAppString(@"Warming:", @"Warming:")
                     Text:loadAppString(warning, warning)];
    return;
  }
  [self catchUpWithSelection];
  NSMutableDictionary *record = [self getTextDictTemplate:SlideXML];
  [self takeControlsIntoRecord:record];
  const NSInteger row = selectedRow(tbContent, tbContentProtocol);
  NSMutableArray *textObjects = [tbContentProtocol list];
  if (row >= 0)
    [textObjects insertObject:record atIndex:static_cast<NSUInteger>(row)];
  else
    [textObjects addObject:record];
  [self storeTextObjectsInSlide:slide];
}

- (IBAction)onContentSave:(id)sender {
  [self catchUpWithSelection];
  NSMutableDictionary *slide = [self selectedSlide];
  NSMutableDictionary *record = [self selectedTextObject];
  if (slide == nil || record == nil)
    return;
  [self takeControlsIntoRecord:record];
  [self storeTextObjectsInSlide:slide];
}

- (IBAction)onContentRemove:(id)sender {
  [self catchUpWithSelection];
  NSMutableDictionary *slide = [self selectedSlide];
  const NSInteger row = selectedRow(tbContent, tbContentProtocol);
  if (slide == nil || row < 0)
    return;
  [[tbContentProtocol list] removeObjectAtIndex:static_cast<NSUInteger>(row)];
  deselectRows(tbContent);
  [self selectTextObjectAfterRemoval];
  [self storeTextObjectsInSlide:slide];
}

- (void)selectTextObjectAfterRemoval {
  const auto count = static_cast<int64_t>([[tbContentProtocol list] count]);
  if (selectContentIndex >= count)
    --selectContentIndex;
  if (selectContentIndex >= 0 && selectContentIndex < count)
    selectRow(tbContent, selectContentIndex);
  else
    selectContentIndex = -1;
}

- (IBAction)onTypeButtonChange:(id)sender {
  NSMutableDictionary *record = [self selectedTextObject];
  if (record == nil)
    return;
  if (sender == comAlign) {
    const auto item = static_cast<NSUInteger>([comAlign indexOfSelectedItem]);
    setRecordText(record, slider::kAlign,
                  item < [AlignShortCut count] ? [AlignShortCut objectAtIndex:item] : kCentred);
  } else if (sender == comTextAlign) {
    setRecordText(record, slider::kTextAlign, indexText([comTextAlign indexOfSelectedItem]));
  } else if (sender == comTextAnimation) {
    setRecordText(record, slider::kTextAnimation,
                  indexText([comTextAnimation indexOfSelectedItem]));
  } else if (sender == comStartDirection) {
    setRecordText(record, slider::kStartDirection,
                  indexText([comStartDirection indexOfSelectedItem]));
  } else if (sender == comStyle) {
    setRecordText(record, slider::kStyle, textOfField(comStyle));
  }
  reloadTable(tbContent);
  [self onSave:nil];
}

- (void)onContentViewChange {
  NSMutableDictionary *record = [self selectedTextObject];
  if (record != nil) {
    isCaptionLeftForSlide = NO;
    [self showTextObject:record];
    return;
  }
  showTextInField(txtCaption, @"");
  if (!isCaptionLeftForSlide) {
    setButtonUsable(btnBrowse, NO);
    setButtonUsable(btnRemove, NO);
  }
  isCaptionLeftForSlide = NO;
}

- (void)showTextObject:(NSDictionary *)record {
  showTextInField(txtCaption, recordText(record, slider::kText));
  showTextInField(txtInTime, recordText(record, slider::kInTime));
  showTextInField(txtStayTime, recordText(record, slider::kStayTime));
  showTextInField(txtTextSize, recordText(record, slider::kSize));
  const NSUInteger align = [AlignShortCut indexOfObject:recordText(record, slider::kAlign)];
  selectComboItem(comAlign, align != NSNotFound ? static_cast<NSInteger>(align) : 0);
  selectComboItem(comTextAlign, intValue(recordText(record, slider::kTextAlign)));
  selectComboItem(comTextAnimation, intValue(recordText(record, slider::kTextAnimation)));
  selectComboItem(comStartDirection, intValue(recordText(record, slider::kStartDirection)));
  [self showStyle:recordText(record, slider::kStyle)];
  [[btnTextColor cell] setBackgroundColor:colorOfText(recordText(record, slider::kColor))];
  [btnTextColor setNeedsDisplay:YES];
  selectContentIndex = static_cast<int32_t>([tbContent selectedRow]);
  setButtonUsable(btnBrowse, YES);
  setButtonUsable(btnRemove, YES);
}

// The item is chosen by the number that a style may begin with; the text is the style itself, so
// that saving the caption keeps it.
- (void)showStyle:(NSString *)style {
  selectComboItem(comStyle, intValue(style));
  if ([style length] > 0)
    showTextInField(comStyle, style);
}

- (void)tableViewSelectionDidChange:(NSNotification *)notification {
  if ([notification object] == tableView)
    [self onTableViewChange];
  else if ([notification object] == tbContent)
    [self onContentViewChange];
}

- (void)controlTextDidChange:(NSNotification *)notification {
  id field = [notification object];
  if (field == txtFileName)
    [self takeFileName];
  else if (field == txtCaption)
    [self storeTyped:textOfField(txtCaption) underKey:slider::kText];
  else if (field == txtInTime)
    [self takeNumberOfField:txtInTime rule:kInTimeRule];
  else if (field == txtStayTime)
    [self takeNumberOfField:txtStayTime rule:kStayTimeRule];
  else if (field == txtTextSize)
    [self takeNumberOfField:txtTextSize rule:kSizeRule];
}

- (void)takeFileName {
  NSMutableDictionary *slide = [self selectedSlide];
  if (slide == nil)
    return;
  setSlideFile(slide, textOfField(txtFileName));
  reloadTable(tableView);
  [self onSave:nil];
}

// Stores what was typed in the selected caption, if there is one.
- (void)storeTyped:(NSString *)value underKey:(std::string_view)key {
  NSMutableDictionary *record = [self selectedTextObject];
  if (record == nil)
    return;
  setRecordText(record, key, value);
  reloadTable(tbContent);
  [self onSave:nil];
}

- (void)takeNumberOfField:(NSTextField *)field rule:(const NumberRule &)rule {
  NSString *typed = textOfField(field);
  NSString *value = [UtilityFunction checkIntegerValueStringFrom:typed];
  bool isToBeStored = [value isEqualToString:typed];
  if (isOutOfRange(value, rule) && !wantsOutOfRange(rule)) {
    value = moderated(value, rule);
    isToBeStored = true;
  }
  showTextInField(field, value);
  if (isToBeStored && [value length] > 0 && intValue(value) >= 1)
    [self storeTyped:value underKey:rule.key];
}

@end
