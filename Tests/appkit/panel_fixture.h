// The content editor from its nib in a window, on a workspace in a temporary folder.
#pragma once

#import "Class/TableViewProtocol.h"
#import "vireonix/PrivateView.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <vector>

/// Stands for the settings window's controller: counts what the panel asks of it.
@interface PanelOwner : NSObject {
  std::atomic<int> saves;
}
- (void)saveGlobalSettings;
/// How often, on a thread other than the main one.
- (int)saves;
@end

namespace vireonix::test {

class PanelTest : public testing::Test {
protected:
  PanelTest();
  ~PanelTest() override;
  PanelTest(const PanelTest &) = delete;
  PanelTest &operator=(const PanelTest &) = delete;

  /// Writes the workspace's document and opens the panel on it.
  void open(const std::string &document);
  /// Opens the panel on the workspace as it is.
  void open();
  /// Releases the panel and its window.
  void close();

  /// A field of the panel by its name.
  id field(const char *name);
  TableViewProtocol *slides() { return field("tableViewProtocol"); }
  TableViewProtocol *captions() { return field("tbContentProtocol"); }
  int selectedIndex() { return [field("selectedIndex") intValue]; }
  int selectContentIndex() { return [field("selectContentIndex") intValue]; }

  /// Selects a row and lets the panel hear of it.
  void selectSlide(NSInteger row);
  void selectCaption(NSInteger row);
  /// Lets the panel hear of what has changed.
  void settle();

  /// The values of one key in the lists.
  std::vector<std::string> slideFiles();
  std::vector<std::string> captionTexts();
  /// A value of a caption in the list.
  std::string valueOf(NSUInteger caption, const char *key);
  /// A value of a caption in the document on disk.
  std::string savedValue(std::size_t slide, std::size_t caption, const char *key);

  std::string document() { return fileBytes(folder_.at("workspace/intro_asset/data.xml")); }
  [[nodiscard]] std::string inWorkspace(const std::string &relative) const {
    return folder_.at("workspace/" + relative);
  }
  void type(NSTextField *field, const char *text);
  static std::string textOf(NSTextField *field);

  /// The file that the next open panel answers; empty for a cancelled one.
  void chooseNext(const std::string &path);

  TemporaryFolder folder_;
  NSAutoreleasePool *pool_ = [[NSAutoreleasePool alloc] init];
  NSWindow *window_ = nil;
  PrivateView *panel_ = nil;
  PanelOwner *owner_ = [[PanelOwner alloc] init];
};

/// A caption element as the panel writes it, but for the attributes not given.
std::string captionMarkup(const std::string &text, const std::string &attributes = "");
std::string slideMarkup(const std::string &file, const std::string &captions = "");
/// A document with the styles "Fade", "Fly" and "Zoom".
std::string documentMarkup(const std::string &slides);

} // namespace vireonix::test
