#import "vireonix/PrivateView.h"

#import "Bridge/text.h"
#import "Class/FieldText.h"
#import "Class/TableViewProtocol.h"
#import "Locale.h"
#import "Platform/desktop.h"
#import "vireonix/PrivateView+SetUp.h"
#import "vireonix/panel_controls.h"
#import "vireonix/slider_records.h"

#include "Core/file_tree.h"
#include "Core/media_file.h"
#include "Core/slider_document.h"
#include "Core/workspace_path.h"

#include <string>
#include <utility>

using namespace vireonix;

namespace slider = vireonix::core::slider;

static NSString *const kMediaFolder = @"intro_asset";
static NSString *const kOpenTitle = @"Select a file(*.jpg; *.png; *.gif; *.swf)";

namespace {

// Errors leave the workspace without the file; the record names it all the same. What lies outside
// the workspace is not the panel's to replace: a revert would not bring it back.
void putCopyInWorkspace(NSString *workspace, NSString *relative, NSString *source) {
  if (!core::isInsideWorkspace(bridge::path(workspace), bridge::path(relative)))
    return;
  const std::string destination = bridge::path([workspace stringByAppendingPathComponent:relative]);
  if (core::exists(destination))
    (void)core::removeTree(destination);
  (void)core::copyFile(bridge::path(source), destination);
}

} // namespace

@implementation PrivateView (Slides)

- (NSMutableDictionary *)selectedSlide {
  const NSInteger row = selectedRow(tableView, tableViewProtocol);
  return row >= 0 ? [[tableViewProtocol list] objectAtIndex:static_cast<NSUInteger>(row)] : nil;
}

- (NSString *)openFile {
  NSOpenPanel *panel = [NSOpenPanel openPanel];
  [panel setCanChooseFiles:YES];
  [panel setCanChooseDirectories:NO];
  [panel setCanCreateDirectories:NO];
  [panel setAllowsMultipleSelection:NO];
  [panel setTitle:loadAppString(kOpenTitle, kOpenTitle)];
  [panel setAllowedFileTypes:@[ @"jpg", @"png", @"gif", @"swf" ]];
  platform::prepareForModalSession(panel);
  if ([panel runModal] != NSFileHandlingPanelOKButton)
    return nil;
  return [[[panel URLs] lastObject] path];
}

// The file that the user chose, or nil.
- (NSString *)existingFileFromUser {
  NSString *file = [self openFile];
  const std::string path = bridge::path(file);
  return core::exists(path) && !core::isFolder(path) ? file : nil;
}

- (IBAction)onAdd:(id)sender {
  NSString *file = [self existingFileFromUser];
  if (file == nil)
    return;
  NSString *relative = [kMediaFolder stringByAppendingPathComponent:[file lastPathComponent]];
  showTextInField(txtFileName, relative);
  putCopyInWorkspace([self workSpace], relative, file);
  slider::Slide slide;
  slide.backgroundImage = bridge::utf8(relative);
  [self insertSlide:recordOfSlide(std::move(slide))];
  [self onSave:nil];
}

- (void)insertSlide:(NSMutableDictionary *)record {
  NSMutableArray *slides = [tableViewProtocol list];
  const bool isBefore = selectedRow(tableView, tableViewProtocol) >= 0 && selectedIndex >= 0 &&
                        static_cast<NSUInteger>(selectedIndex) < [slides count];
  if (isBefore)
    [slides insertObject:record atIndex:static_cast<NSUInteger>(selectedIndex)];
  else
    [slides addObject:record];
  reloadTable(tableView);
  if (!isBefore)
    selectRow(tableView, static_cast<NSInteger>([slides count]) - 1);
}

- (IBAction)onBrowse:(id)sender {
  if (selectedIndex < 0 ||
      static_cast<NSUInteger>(selectedIndex) >= [[tableViewProtocol list] count])
    return;
  NSString *file = [self existingFileFromUser];
  if (file == nil)
    return;
  NSString *name = [file lastPathComponent];
  showTextInField(txtFileName, name);
  putCopyInWorkspace([self workSpace], name, file);
  NSMutableDictionary *slide =
      [[tableViewProtocol list] objectAtIndex:static_cast<NSUInteger>(selectedIndex)];
  [self checkRemoveResource:recordText(slide, slider::kBackgroundImage)];
  setSlideFile(slide, name);
  reloadTable(tbContent);
  reloadTable(tableView);
  [self onSave:nil];
}

- (IBAction)onRemove:(id)sender {
  NSMutableArray *slides = [tableViewProtocol list];
  const NSInteger row = selectedRow(tableView, tableViewProtocol);
  if (row < 0)
    return;
  NSDictionary *slide = [slides objectAtIndex:static_cast<NSUInteger>(row)];
  [self checkRemoveResource:recordText(slide, slider::kBackgroundImage)];
  [slides removeObjectAtIndex:static_cast<NSUInteger>(row)];
  deselectRows(tableView);
  [self selectSlideAfterRemoval];
  reloadTable(tableView);
  [[tbContentProtocol list] removeAllObjects];
  [self setShownSlide:nil];
  reloadTable(tbContent);
  [self onSave:nil];
}

// The slide that followed the removed one, or the last; none when no slide is left.
- (void)selectSlideAfterRemoval {
  const auto count = static_cast<int64_t>([[tableViewProtocol list] count]);
  if (selectedIndex < 0 || selectedIndex >= count)
    --selectedIndex;
  if (selectedIndex >= 0 && selectedIndex < count)
    selectRow(tableView, selectedIndex);
  else
    selectedIndex = -1;
}

- (void)checkRemoveResource:(NSString *)relativePath {
  NSUInteger uses = 0;
  for (NSDictionary *slide in [tableViewProtocol list])
    uses += [recordText(slide, slider::kBackgroundImage) isEqualToString:relativePath] ? 1 : 0;
  if (uses == 1)
    (void)core::removeMediaFile(bridge::path([self workSpace]), bridge::path(relativePath));
}

- (void)setShownSlide:(NSMutableDictionary *)slide {
  [slide retain];
  [shownSlide release];
  shownSlide = slide;
}

- (void)onTableViewChange {
  NSMutableDictionary *slide = [self selectedSlide];
  if (slide == nil) {
    [txtFileName setEnabled:NO];
    deselectRows(tbContent);
    setButtonUsable(btnBrowse, NO);
    setButtonUsable(btnRemove, NO);
    return;
  }
  showTextInField(txtFileName, recordText(slide, slider::kBackgroundImage));
  [self listTextObjectsOfSlide:slide];
  [txtFileName setEnabled:YES];
  selectedIndex = static_cast<int32_t>([tableView selectedRow]);
  setButtonUsable(btnBrowse, YES);
  setButtonUsable(btnRemove, YES);
}

- (void)listTextObjectsOfSlide:(NSMutableDictionary *)slide {
  NSMutableArray *textObjects = [tbContentProtocol list];
  [textObjects setArray:[slide objectForKey:kTextObjectsKey]];
  [self setShownSlide:slide];
  // The deselection is told later, and must not be taken for the user's.
  isCaptionLeftForSlide = tbContent != nil && [tbContent selectedRow] >= 0;
  deselectRows(tbContent);
  reloadTable(tbContent);
}

- (void)catchUpWithSelection {
  if ([self selectedSlide] != shownSlide)
    [self onTableViewChange];
}

@end
