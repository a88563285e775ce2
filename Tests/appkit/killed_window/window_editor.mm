#import "window_editor.h"

#import "Bridge/text.h"
#import "Class/FieldText.h"
#import "Class/PositionRect.h"
#import "Class/PositionView.h"
#import "Class/TableViewProtocol.h"
#import "support/mouse.h"
#import "support/open_panel.h"
#import "support/run_loop.h"
#import "support/temporary_folder.h"
#import "told_state.h"
#import "vireonix/PrivateView.h"
#import "vireonix/panel_controls.h"
#import "vireonix/slider_records.h"

#include "Core/colour_text.h"
#include "Core/position.h"

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>

using namespace vireonix::bridge;

namespace vireonix::test {

namespace slider = core::slider;

namespace {

const std::map<std::string_view, NSString *> kFields = {{slider::kText, @"txtCaption"},
                                                        {slider::kSize, @"txtTextSize"},
                                                        {slider::kInTime, @"txtInTime"},
                                                        {slider::kStayTime, @"txtStayTime"},
                                                        {slider::kBackgroundImage, @"txtFileName"}};

const std::map<std::string_view, NSString *> kCombos = {
    {slider::kStyle, @"comStyle"},
    {slider::kAlign, @"comAlign"},
    {slider::kTextAlign, @"comTextAlign"},
    {slider::kTextAnimation, @"comTextAnimation"},
    {slider::kStartDirection, @"comStartDirection"}};

NSArray *alignments() {
  return @[ @"TL", @"TC", @"TR", @"CL", @"C", @"CR", @"BL", @"BC", @"BR" ];
}

void expect(const char *what, const std::function<bool()> &condition) {
  if (pumpEventsUntil(condition, 30))
    return;
  std::fprintf(stderr, "the window never came to show %s\n", what);
  std::_Exit(4);
}

void activate(NSControl *control) {
  [control sendAction:[control action] to:[control target]];
}

// What the panel was told is also told to it a turn of the run loop later.
void letThePanelHear() {
  pumpFor(0.02);
}

} // namespace

WindowEditor::WindowEditor(const std::string &workspace, bool withPreview)
    : workspace_(workspace),
      controller_([[PluginSettingsDelegate alloc] initWithLanguageCode:@"en"
                                                            bundlePath:@VIREONIX_BUNDLE]) {
  [controller_ setWorkSpace:pathString(workspace)];
  [[controller_ window] makeKeyAndOrderFront:nil];
  if (!withPreview)
    [[controller_ repeatTimer] setFireDate:[NSDate distantFuture]];
  panel_ = [controller_ valueForKey:@"privateView"];
  if (panel_ == nil) {
    std::fprintf(stderr, "no settings window\n");
    std::_Exit(4);
  }
}

id WindowEditor::panelField(NSString *name) const {
  return [panel_ valueForKey:name];
}

NSComboBox *WindowEditor::comboOf(std::string_view key) const {
  return panelField(kCombos.at(key));
}

std::vector<slider::Slide> WindowEditor::slides() const {
  std::vector<slider::Slide> slides;
  TableViewProtocol *list = panelField(@"tableViewProtocol");
  for (NSDictionary *record in [list list]) {
    slider::Slide slide;
    slide.backgroundImage = utf8(recordText(record, slider::kBackgroundImage));
    for (NSDictionary *caption in [record objectForKey:kTextObjectsKey])
      slide.textObjects.push_back(textObjectOfRecord(caption));
    slides.push_back(std::move(slide));
  }
  return slides;
}

std::string WindowEditor::position() const {
  PositionRect *record = [controller_ valueForKey:@"ptRect"];
  core::Position position = [record position];
  position.layer = static_cast<int32_t>([[controller_ matLayer] selectedTag]);
  return core::positionText(position);
}

std::string WindowEditor::control(std::string_view key) const {
  if (key == slider::kColor)
    return utf8(colorTextOfButton([panel_ btnTextColor]));
  if (kFields.contains(key))
    return utf8(textOfField(panelField(kFields.at(key))));
  if (key == slider::kStyle)
    return utf8(textOfField([panel_ comStyle]));
  const NSInteger item = std::max<NSInteger>(0, [comboOf(key) indexOfSelectedItem]);
  return key == slider::kAlign ? utf8([alignments() objectAtIndex:static_cast<NSUInteger>(item)])
                               : std::to_string(item);
}

void WindowEditor::showSlide(NSInteger row) {
  NSTableView *table = [panel_ tableView];
  [table deselectAll:nil];
  expect("no slide", [this] { return ![[panel_ txtFileName] isEnabled]; });
  letThePanelHear();
  if (row < 0)
    return;
  selectRow(table, row);
  expect("the slide", [this] { return bool([[panel_ btnRemove] isEnabled]); });
  letThePanelHear();
}

void WindowEditor::showCaption(NSInteger row) {
  NSTableView *table = [panel_ tbContent];
  NSTextField *caption = [panel_ txtCaption];
  if ([table selectedRow] >= 0) {
    [table deselectAll:nil];
    expect("no caption", [caption] { return [textOfField(caption) length] == 0; });
  }
  // What was typed for a new caption still stands there.
  showTextInField(caption, @"");
  selectRow(table, row);
  expect("the caption", [caption] { return [textOfField(caption) length] > 0; });
}

void WindowEditor::addSlide(const std::string &file) {
  const OpenPanelAnswer answer(NSFileHandlingPanelOKButton, file);
  press(@"btnAdd");
}

void WindowEditor::replacePicture(const std::string &file) {
  const OpenPanelAnswer answer(NSFileHandlingPanelOKButton, file);
  press(@"btnBrowse");
}

void WindowEditor::press(NSString *button) {
  id owner = [panel_ respondsToSelector:NSSelectorFromString(button)] ? panel_ : controller_;
  NSButton *control = [owner valueForKey:button];
  if ([control isEnabled])
    activate(control);
}

void WindowEditor::typeInto(NSTextField *field, const std::string &text) {
  [[controller_ window] makeFirstResponder:field];
  [field selectText:nil];
  [[field currentEditor] insertText:string(text)];
}

void WindowEditor::type(std::string_view key, const std::string &text) {
  typeInto(panelField(kFields.at(key)), text);
}

void WindowEditor::choose(std::string_view key, const std::string &value, bool isTold) {
  NSComboBox *combo = comboOf(key);
  if (key == slider::kStyle)
    [combo setStringValue:string(value)];
  else if (key == slider::kAlign)
    selectComboItem(combo, static_cast<NSInteger>([alignments() indexOfObject:string(value)]));
  else
    selectComboItem(combo, std::stoi(value));
  if (isTold)
    activate(combo);
}

void WindowEditor::chooseColor(const std::string &value) {
  NSColorPanel *colors = [NSColorPanel sharedColorPanel];
  NSArray *modes = @[ NSModalPanelRunLoopMode ];
  [colors performSelector:@selector(setColor:) withObject:colorOfText(string(value)) afterDelay:0
                  inModes:modes];
  [colors performSelector:@selector(close) withObject:nil afterDelay:0.01 inModes:modes];
  activate([panel_ btnTextColor]);
}

void WindowEditor::typePosition(NSString *field, const std::string &text) {
  typeInto([controller_ valueForKey:field], text);
}

void WindowEditor::slideTransparency(double value) {
  [[controller_ sldTrans] setDoubleValue:value];
  activate([controller_ sldTrans]);
}

void WindowEditor::chooseLayer(NSInteger tag) {
  [[controller_ matLayer] selectCellWithTag:tag];
}

void WindowEditor::dragBox(double right, double up) {
  PositionView *canvas = [controller_ valueForKey:@"positionView"];
  [canvas display];
  NSView *box = [canvas valueForKey:@"objectView"];
  const NSPoint from = NSMakePoint(NSMidX([box frame]), NSMidY([box frame]));
  const NSPoint to = NSMakePoint(from.x + right, from.y + up);
  sendMouse(canvas, NSLeftMouseDown, from);
  sendMouse(canvas, NSLeftMouseDragged, to);
  sendMouse(canvas, NSLeftMouseUp, to);
  expect("where the box was dragged",
         [this, canvas] { return [controller_ valueForKey:@"ptRect"] == [canvas positionRect]; });
}

void WindowEditor::waitForPositionFile() {
  expect("the saved position",
         [this] { return fileBytes(workspace_ + "/" + kPositionFile) == position(); });
}

} // namespace vireonix::test
