// Where a workspace lives, how it is installed from the plug-in bundle or completed, and how its
// content is exported. No failure is reported: what could not be read or written is simply missing
// afterwards. Main thread only.
#import <Foundation/Foundation.h>

@class XMLElement;

@interface PluginSettingsInfo : NSObject {
  NSString *workSpace;
  NSString *identifier;
  NSString *bundlePath;
}

/// Makes a fresh workspace from the bundle's resources; what stood there is deleted. Always YES.
- (BOOL)createWorkSpace;

/// Makes the workspace when it is missing, otherwise adds what it lacks and keeps everything it
/// holds. Always YES.
- (BOOL)installWorkSpace;

/// The root of the slider document `intro_asset/data.xml`, or nil when it is missing or beyond
/// repair.
- (XMLElement *)loadDataRootElement;

/// Replaces `destination` by the workspace's content without the preview page, its scripts and its
/// movie. NO, and nothing changed, when there is no workspace.
- (BOOL)exportWorkSpaceToPath:(NSString *)destination;

/// Copies what `destination`, an existing folder, lacks. Without `hidden`, top-level entries whose
/// name begins with "." stay behind with all they hold.
+ (void)copyFromPath:(NSString *)source toPath:(NSString *)destination withHiddenFiles:(BOOL)hidden;

/// The per-user folder that holds the workspaces of hosts which name none. Nothing is created.
+ (NSString *)getSavePluginPath;

@property(copy) NSString *workSpace;
/// Names the movie "<identifier>.swf"; "vireonix" when empty.
@property(copy) NSString *identifier;
@property(copy) NSString *bundlePath;

@end
