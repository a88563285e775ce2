#import "vireonix/PrivateView.h"

#import "Bridge/text.h"
#import "Class/DetachedCall.h"
#import "Class/PluginSettingsInfo.h"
#import "Class/TableViewProtocol.h"
#import "Class/XMLElement.h"
#import "Locale.h"
#import "vireonix/PrivateView+SetUp.h"
#import "vireonix/panel_controls.h"
#import "vireonix/slider_records.h"

#include "Core/file_tree.h"
#include "Core/slider_document.h"
#include "Core/workspace_path.h"

#include <string>
#include <utility>

using namespace vireonix;

namespace slider = vireonix::core::slider;
namespace xml = vireonix::core::xml;

static NSString *const kDocument = @"intro_asset/data.xml";
static NSString *const kBundledDocument = @"Contents/Resources/data/intro_asset/data.xml";

namespace {

struct Column {
  std::string_view key;
  NSString *title;
};

const Column kSlideColumns[] = {{slider::kBackgroundImage, @"Image File Name"}};

const Column kTextObjectColumns[] = {{slider::kText, @"Text objects in slider"},
                                     {slider::kSize, @"Size"},
                                     {slider::kColor, @"Color"},
                                     {slider::kStyle, @"Style"},
                                     {slider::kAlign, @"Align"},
                                     {slider::kInTime, @"In Time"},
                                     {slider::kStayTime, @"Stay Time"},
                                     {slider::kTextAlign, @"Text Align"},
                                     {slider::kTextAnimation, @"Text Animation"},
                                     {slider::kStartDirection, @"Start Direction"},
                                     {slider::kBackgroundImage, @"ID"}};

template <std::size_t N> void setColumns(TableViewProtocol *protocol, const Column (&columns)[N]) {
  NSMutableArray *keys = [NSMutableArray array];
  NSMutableDictionary *titles = [NSMutableDictionary dictionary];
  for (const Column &column : columns) {
    NSString *key = recordKey(column.key);
    [keys addObject:key];
    [titles setObject:loadAppString(column.title, column.title) forKey:key];
  }
  [protocol setKeys:keys];
  [protocol setTitles:titles];
}

// A copy that no longer holds on to the document; nil for null.
XMLElement *detached(const xml::Node *node) {
  if (node == nullptr)
    return nil;
  return [XMLElement elementWithNode:xml::copyOf(*node)];
}

void replace(XMLElement *&kept, XMLElement *element) {
  if (element == nil)
    return;
  [kept release];
  kept = [element retain];
}

} // namespace

@implementation PrivateView (Document)

- (std::string)documentPath {
  return bridge::path([[self workSpace] stringByAppendingPathComponent:kDocument]);
}

- (void)readWorkspaceDocument {
  tableViewProtocol = [[TableViewProtocol alloc] init];
  [tableViewProtocol setOwer:self];
  documentFile.willRead([self documentPath]);
  XMLElement *root = [settingsInfo loadDataRootElement];
  documentFile.didRead(root != nil ? [root node] : nullptr);
  slider::Document document;
  if (root != nil)
    document = slider::readDocument(*[root node]);
  replace(StyleXML, detached(document.styles));
  [self listStyles];
  if (!document.slides)
    return;
  setColumns(tableViewProtocol, kSlideColumns);
  tbContentProtocol = [[TableViewProtocol alloc] init];
  [tbContentProtocol setOwer:self];
  setColumns(tbContentProtocol, kTextObjectColumns);
  for (slider::Slide &slide : *document.slides)
    [[tableViewProtocol list] addObject:recordOfSlide(std::move(slide))];
}

// Without named styles the items of the nib stay.
- (void)listStyles {
  NSMutableArray *names = [NSMutableArray array];
  if (StyleXML != nil) {
    for (const std::string &name : slider::styleNames(*[StyleXML node]))
      [names addObject:bridge::string(name)];
  }
  if ([names count] > 0) {
    [comStyle removeAllItems];
    [comStyle addItemsWithObjectValues:names];
  }
  selectComboItem(comStyle, 0);
}

- (XMLElement *)getDataXML {
  if (core::isFolder(bridge::path([self bundlePath])))
    return [XMLElement
        rootElementOfFile:[[self bundlePath] stringByAppendingPathComponent:kBundledDocument]];
  if (core::isFolder(bridge::path([self workSpace])))
    return
        [XMLElement rootElementOfFile:[[self workSpace] stringByAppendingPathComponent:kDocument]];
  return nil;
}

- (void)loadStyleXML {
  XMLElement *root = [self getDataXML];
  if (root != nil)
    replace(StyleXML, detached(slider::templateStyles(*[root node])));
}

- (void)loadSlideXML {
  XMLElement *root = [self getDataXML];
  if (root != nil)
    replace(SlideXML, detached(slider::templateSlide(*[root node])));
}

- (IBAction)onSave:(id)sender {
  if ([self workSpace] == nil || !core::exists(bridge::path([self workSpace])))
    return;
  const std::string file = [self documentPath];
  const xml::Tree root = documentFile.root(file);
  slider::DocumentWriter writer(
      {.root = root.get(), .styles = [StyleXML node], .slide = [SlideXML node]},
      std::move(documentBytes));
  writeSlides([tableViewProtocol list], writer, SlideXML != nil ? [SlideXML tree] : nullptr);
  documentBytes = writer.finish();
  // A document that cannot be written stays as it was; nobody is told. What lies outside the
  // workspace is not the panel's to write: a revert would not bring it back.
  if (core::isInsideWorkspace(bridge::path([self workSpace]), bridge::path(kDocument)))
    (void)documentFile.replace(file, documentBytes);
  [DetachedCall send:@selector(saveGlobalSettings) to:[self ower]];
}

@end
