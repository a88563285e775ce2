#import "panel_fixture.h"

#import "Bridge/text.h"
#import "Class/XMLElement.h"
#import "Locale.h"
#import "support/panel_nib.h"
#import "support/run_loop.h"

#include "Core/slider_document.h"

#include <objc/runtime.h>

@implementation PanelOwner
- (void)saveGlobalSettings {
  if (![NSThread isMainThread])
    ++saves;
}
- (int)saves {
  return saves;
}
@end

namespace vireonix::test {

namespace {

const char *const kTemplate =
    "<main><define_animation_Style><s Name='Template style'/></define_animation_Style><data>"
    "<slide effect='fade' Background_image=''>"
    "<text set_animation_style='Fade' Align='C' In_Time='0' Stay_Time='1' Text_Align='0' "
    "Text_Animation_LetterByLetter='0' Animation_Start_Direction='0' speed='2'>"
    "<text><![CDATA[<b><font size=\"12\" color=\"#000000\">New</font></b>]]></text></text></slide>"
    "</data></main>";

NSString *chosenFile = nil;

IMP realOpenFile = nullptr;

Method openFileMethod() {
  return class_getInstanceMethod([PrivateView class], @selector(openFile));
}

NSString *answerChosenFile(id, SEL) {
  return [[chosenFile retain] autorelease];
}

std::vector<std::string> valuesOf(TableViewProtocol *protocol, NSString *key) {
  std::vector<std::string> values;
  for (NSDictionary *record in [protocol list])
    values.push_back(bridge::utf8([record objectForKey:key]));
  return values;
}

} // namespace

PanelTest::PanelTest() {
  setDefaultLanguageCode(@"en");
  setDefaultBundlePath(@VIREONIX_BUNDLE);
  folder_.write("bundle/Contents/Resources/data/intro_asset/data.xml", kTemplate);
  folder_.write("workspace/index.html", "");
}

PanelTest::~PanelTest() {
  close();
  pumpFor(0.02);
  if (realOpenFile != nullptr)
    method_setImplementation(openFileMethod(), realOpenFile);
  realOpenFile = nullptr;
  [owner_ release];
  [pool_ release];
}

void PanelTest::open(const std::string &document) {
  folder_.write("workspace/intro_asset/data.xml", document);
  open();
}

void PanelTest::open() {
  panel_ = [panelOfNib([NSBundle bundleWithPath:@VIREONIX_BUNDLE]) retain];
  ASSERT_NE(panel_, nil);
  window_ = [[NSWindow alloc] initWithContentRect:NSMakeRect(100, 100, 900, 700)
                                        styleMask:NSTitledWindowMask | NSClosableWindowMask
                                          backing:NSBackingStoreBuffered
                                            defer:NO];
  [window_ setReleasedWhenClosed:NO];
  [[window_ contentView] addSubview:panel_];
  [panel_ setWorkSpace:bridge::pathString(folder_.at("workspace"))];
  [panel_ setOwer:owner_];
  [panel_ setBundlePath:bridge::pathString(folder_.at("bundle"))];
  [panel_ loadDispInfo];
  [window_ makeKeyAndOrderFront:nil];
}

void PanelTest::close() {
  @autoreleasepool {
    [window_ close];
    [panel_ removeFromSuperview];
    [panel_ release];
    [window_ release];
  }
  panel_ = nil;
  window_ = nil;
}

id PanelTest::field(const char *name) {
  return [panel_ valueForKey:[NSString stringWithUTF8String:name]];
}

void PanelTest::settle() {
  pumpFor(0.03);
}

void PanelTest::selectSlide(NSInteger row) {
  [[panel_ tableView] selectRowIndexes:[NSIndexSet indexSetWithIndex:row] byExtendingSelection:NO];
  settle();
}

void PanelTest::selectCaption(NSInteger row) {
  [[panel_ tbContent] selectRowIndexes:[NSIndexSet indexSetWithIndex:row] byExtendingSelection:NO];
  settle();
}

std::vector<std::string> PanelTest::slideFiles() {
  return valuesOf(slides(), @"Background_image");
}

std::vector<std::string> PanelTest::captionTexts() {
  return valuesOf(captions(), @"text");
}

std::string PanelTest::valueOf(NSUInteger caption, const char *key) {
  return bridge::utf8([[[captions() list] objectAtIndex:caption] objectForKey:bridge::string(key)]);
}

std::string PanelTest::savedValue(std::size_t slide, std::size_t caption, const char *key) {
  const auto root = core::xml::parse(document(), core::xml::Mode::Strict);
  if (!root)
    return "(no document)";
  const auto read = core::slider::readDocument(*root);
  if (!read.slides || slide >= read.slides->size() ||
      caption >= read.slides->at(slide).textObjects.size())
    return "(no caption)";
  return std::string(
      read.slides->at(slide).textObjects.at(caption).find(key).value_or("(no value)"));
}

std::string PanelTest::textOf(NSTextField *field) {
  return bridge::utf8([field stringValue]);
}

void PanelTest::type(NSTextField *field, const char *text) {
  [field setStringValue:[NSString stringWithUTF8String:text]];
  [panel_
      controlTextDidChange:[NSNotification notificationWithName:NSControlTextDidChangeNotification
                                                         object:field]];
}

void PanelTest::chooseNext(const std::string &path) {
  [chosenFile release];
  chosenFile = path.empty() ? nil : [bridge::pathString(path) retain];
  const IMP before =
      method_setImplementation(openFileMethod(), reinterpret_cast<IMP>(answerChosenFile));
  if (realOpenFile == nullptr)
    realOpenFile = before;
}

std::string captionMarkup(const std::string &text, const std::string &attributes) {
  return "<text " + attributes + "><text><![CDATA[<b><font size=\"24\" color=\"#FF0000\">" + text +
         "</font></b>]]></text></text>";
}

std::string slideMarkup(const std::string &file, const std::string &captions) {
  return "<slide Background_image=\"" + file + "\">" + captions + "</slide>";
}

std::string documentMarkup(const std::string &slides) {
  return "<main version=\"7\"><define_animation_Style><s Name=\"Fade\"/><s Name=\"Fly\"/>"
         "<s Name=\"Zoom\"/></define_animation_Style><data>" +
         slides + "</data></main>";
}

} // namespace vireonix::test
