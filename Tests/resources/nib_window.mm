#import "resources/nib_window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

@implementation NibOwner
@end

namespace vireonix::test {
namespace {

PrivateView *panelAmong(NSArray *objects) {
  for (id object in objects) {
    if ([object isKindOfClass:[PrivateView class]])
      return object;
  }
  return nil;
}

} // namespace

std::vector<std::string> languages() {
  std::vector<std::string> found;
  for (const auto &entry :
       std::filesystem::directory_iterator(VIREONIX_BUNDLE "/Contents/Resources")) {
    if (entry.path().extension() == ".lproj")
      found.push_back(entry.path().stem());
  }
  std::ranges::sort(found);
  return found;
}

NSString *folderOf(const std::string &language) {
  return [NSString
      stringWithFormat:@"%s/Contents/Resources/%s.lproj", VIREONIX_BUNDLE, language.c_str()];
}

NSArray *loadNib(NSString *path, id owner) {
  NSData *bytes = [NSData dataWithContentsOfFile:path];
  NSNib *nib = [[[NSNib alloc] initWithNibData:bytes bundle:nil] autorelease];
  NSArray *objects = nil;
  if (![nib instantiateWithOwner:owner topLevelObjects:&objects])
    ADD_FAILURE() << "cannot be loaded: " << [path UTF8String];
  return objects;
}

NSTextField *labelOf(NSView *view, NSString *text) {
  if ([view isMemberOfClass:[NSTextField class]] &&
      [[static_cast<NSTextField *>(view) stringValue] isEqualToString:text])
    return static_cast<NSTextField *>(view);
  NSTextField *found = nil;
  for (NSView *subview in [view subviews])
    if (found == nil)
      found = labelOf(subview, text);
  return found;
}

NibWindow::NibWindow(NSString *folder) : owner_([[NibOwner alloc] initWithWindow:nil]) {
  loadNib([folder stringByAppendingPathComponent:@"PluginSettingsDelegate.nib"], owner_);
  PrivateView *temporary = [[[PrivateView alloc] init] autorelease];
  panel_ =
      [panelAmong(loadNib([folder stringByAppendingPathComponent:@"PrivateView.nib"], temporary))
          retain];
  NSView *placeholder = owner_->PrivateSettingView;
  if (placeholder == nil || panel_ == nil)
    return;
  [panel_ setFrame:[placeholder frame]];
  [content() addSubview:panel_];
  [placeholder removeFromSuperview];
}

NibWindow::~NibWindow() {
  [window() close];
  [panel_ release];
  [owner_ release];
}

void NibWindow::resize(NSSize size) {
  [window() setContentSize:size];
}

} // namespace vireonix::test
