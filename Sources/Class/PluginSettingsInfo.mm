#import "Class/PluginSettingsInfo.h"

#import "Bridge/text.h"
#import "Class/XMLElement.h"
#import "Core/file_tree.h"

#include <cerrno>

using vireonix::bridge::path;
using vireonix::core::MergeOptions;

static NSString *const kDefaultIdentifier = @"vireonix";
static NSString *const kDefaultWorkSpaceName = @"vireonix";
static NSString *const kSaveFolder = @"Marquell/orlwick/Plugin/Save";
static NSString *const kMovie = @"book.swf";
static NSString *const kSliderDocument = @"intro_asset/data.xml";

@interface PluginSettingsInfo (Private)
- (void)useDefaultIdentifier;
- (NSArray *)sourceFolders;
- (void)fillNewWorkSpace:(NSString *)folder;
@end

@implementation PluginSettingsInfo

@synthesize workSpace;
@synthesize identifier;
@synthesize bundlePath;

- (void)dealloc {
  [workSpace release];
  [identifier release];
  [bundlePath release];
  [super dealloc];
}

- (BOOL)createWorkSpace {
  [self useDefaultIdentifier];
  if (vireonix::core::exists(path([self workSpace])))
    (void)vireonix::core::removeTree(path([self workSpace]));
  // A later start completes a workspace, but never makes the movie again: it appears whole.
  (void)vireonix::core::makeFolderWhole(path([self workSpace]), [self](const std::string &folder) {
    [self fillNewWorkSpace:vireonix::bridge::pathString(folder)];
  });
  return YES;
}

- (BOOL)installWorkSpace {
  if ([self workSpace] == nil) {
    [self setWorkSpace:[[PluginSettingsInfo getSavePluginPath]
                           stringByAppendingPathComponent:kDefaultWorkSpaceName]];
  }
  // Making it deletes what is there: not on mere suspicion.
  if (vireonix::core::errorAt(path([self workSpace])) == ENOENT)
    return [self createWorkSpace];
  for (NSString *source in [self sourceFolders]) {
    (void)vireonix::core::mergeTree(path(source), path([self workSpace]),
                                    MergeOptions{.hidden = true, .danglingLinks = true});
  }
  return YES;
}

- (XMLElement *)loadDataRootElement {
  [self useDefaultIdentifier];
  return [XMLElement
      rootElementOfFile:[[self workSpace] stringByAppendingPathComponent:kSliderDocument]];
}

- (BOOL)exportWorkSpaceToPath:(NSString *)destination {
  if (!vireonix::core::exists(path([self workSpace])))
    return NO;
  (void)vireonix::core::removeTree(path(destination));
  (void)vireonix::core::createFolders(path(destination));
  [PluginSettingsInfo copyFromPath:[self workSpace] toPath:destination withHiddenFiles:NO];
  for (NSString *previewEntry in @[ @"js", @"index.html", kMovie ])
    (void)vireonix::core::removeTree(
        path([destination stringByAppendingPathComponent:previewEntry]));
  return YES;
}

+ (void)copyFromPath:(NSString *)source
              toPath:(NSString *)destination
     withHiddenFiles:(BOOL)hidden {
  (void)vireonix::core::mergeTree(path(source), path(destination),
                                  MergeOptions{.hidden = static_cast<bool>(hidden)});
}

+ (NSString *)getSavePluginPath {
  NSArray *folders =
      NSSearchPathForDirectoriesInDomains(NSApplicationSupportDirectory, NSUserDomainMask, NO);
  NSString *support =
      [folders count] > 0 ? [folders objectAtIndex:0] : @"~/Library/Application Support";
  return [[support stringByStandardizingPath] stringByAppendingPathComponent:kSaveFolder];
}

@end

@implementation PluginSettingsInfo (Private)

- (void)useDefaultIdentifier {
  if ([[self identifier] length] == 0)
    [self setIdentifier:kDefaultIdentifier];
}

// The folders that a workspace is made of, in the order in which they are copied.
- (NSArray *)sourceFolders {
  const BOOL exists = [[NSFileManager defaultManager] fileExistsAtPath:[self bundlePath]];
  NSBundle *bundle = exists ? [NSBundle bundleWithPath:[self bundlePath]] : [NSBundle mainBundle];
  NSString *resources = [bundle resourcePath];
  NSMutableArray *folders = [NSMutableArray array];
  for (NSString *name in @[ @"html", @"data" ]) {
    NSString *folder = [resources stringByAppendingPathComponent:name];
    if (folder != nil)
      [folders addObject:folder];
  }
  return folders;
}

- (void)fillNewWorkSpace:(NSString *)folder {
  for (NSString *source in [self sourceFolders])
    [PluginSettingsInfo copyFromPath:source toPath:folder withHiddenFiles:NO];
  NSString *ownMovie = [NSString stringWithFormat:@"%@.swf", [self identifier]];
  (void)vireonix::core::copyFile(path([folder stringByAppendingPathComponent:ownMovie]),
                                 path([folder stringByAppendingPathComponent:kMovie]));
}

@end
