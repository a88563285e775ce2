#import "Nib/XibNibLoader.h"

#include <algorithm>
#include <string_view>

namespace {

// The document element stands within this many bytes, behind the XML declaration and comments.
constexpr std::size_t kHeadSize = 1024;
constexpr std::string_view kXibMark = "com.apple.InterfaceBuilder";

// What reads the current kind of XIB document. The platform has no header for it.
NSString *const kXibUnarchiver = @"GSXib5KeyedUnarchiver";
NSString *const kRootObjectsKey = @"IBDocument.RootObjects";
NSString *const kObjectsKey = @"IBDocument.Objects";

// The loader of type "nib" that was registered before ours.
Class replacedLoader = Nil;

bool isXibDocument(NSData *data) {
  const std::string_view head(static_cast<const char *>([data bytes]),
                              std::min<std::size_t>([data length], kHeadSize));
  const std::size_t mark = head.find(kXibMark);
  return head.starts_with("<?xml") && mark != std::string_view::npos &&
         head.rfind("type=\"", mark) != std::string_view::npos;
}

GSModelLoader *replaced() {
  return [[[replacedLoader alloc] init] autorelease];
}

// The XIB loader reads a button cell without an image position as one with the image above the
// title, and nothing in a document can say that there is none.
void repairImagePosition(NSButton *button) {
  if ([button image] == nil && [button imagePosition] == NSImageAbove)
    [button setImagePosition:NSNoImage];
}

void repairViews(NSView *view) {
  if ([view isKindOfClass:[NSButton class]])
    repairImagePosition(static_cast<NSButton *>(view));
  for (NSView *subview in [view subviews])
    repairViews(subview);
}

void repairTopLevelObjects(NSArray *objects) {
  for (id object in objects) {
    if ([object isKindOfClass:[NSWindow class]])
      repairViews([object contentView]);
    else if ([object isKindOfClass:[NSView class]])
      repairViews(object);
  }
}

// The caller's name table, in any case with an array for the top-level objects.
NSDictionary *withTopLevelObjects(NSDictionary *context) {
  NSMutableDictionary *table = [NSMutableDictionary dictionaryWithDictionary:context];
  if ([table objectForKey:NSNibTopLevelObjects] == nil)
    [table setObject:[NSMutableArray array] forKey:NSNibTopLevelObjects];
  return table;
}

} // namespace

// The platform's XIB loader, which has no header either.
@interface GSModelLoader (XibLoader)
- (void)awake:(NSArray *)rootObjects inContainer:(id)objects withContext:(NSDictionary *)context;
@end

namespace {

BOOL instantiate(NSKeyedUnarchiver *unarchiver, GSModelLoader *loader, NSDictionary *table) {
  @try {
    NSArray *rootObjects = [unarchiver decodeObjectForKey:kRootObjectsKey];
    if (rootObjects == nil)
      return NO;
    [loader awake:rootObjects inContainer:[unarchiver decodeObjectForKey:kObjectsKey]
        withContext:table];
    return YES;
  } @catch (NSException *exception) {
    NSLog(@"A nib could not be loaded: %@", [exception reason]);
    return NO;
  }
}

// The platform's own -loadModelData: first looks which kind of XIB document it is given, and never
// frees the tree that it parses for that. The kind is known here.
BOOL loadXib(NSData *data, NSDictionary *table, NSZone *zone) {
  GSModelLoader *loader = [GSModelLoaderFactory modelLoaderForFileType:@"xib"];
  Class unarchiverClass = NSClassFromString(kXibUnarchiver);
  if (unarchiverClass == Nil || ![loader respondsToSelector:@selector(awake:
                                                                inContainer:withContext:)])
    return [loader loadModelData:data externalNameTable:table withZone:zone];
  NSKeyedUnarchiver *unarchiver = [[unarchiverClass alloc] initForReadingWithData:data];
  [unarchiver setObjectZone:zone];
  const BOOL loaded = instantiate(unarchiver, loader, table);
  [unarchiver release];
  return loaded;
}

} // namespace

@implementation XibNibLoader

+ (void)load {
  @autoreleasepool {
    // Asking first makes the factory register all loaders that it finds, ours among them if the
    // image was there early enough.
    replacedLoader = [GSModelLoaderFactory classForType:@"nib"];
    if (replacedLoader == Nil || replacedLoader == [XibNibLoader class])
      replacedLoader = NSClassFromString(@"GSNibLoader");
    [GSModelLoaderFactory registerModelLoaderClass:[XibNibLoader class]];
  }
}

+ (NSString *)type {
  return @"nib";
}

+ (float)priority {
  return 10;
}

- (BOOL)loadModelData:(NSData *)data
    externalNameTable:(NSDictionary *)context
             withZone:(NSZone *)zone {
  if (!isXibDocument(data))
    return [replaced() loadModelData:data externalNameTable:context withZone:zone];
  NSDictionary *table = withTopLevelObjects(context);
  const BOOL loaded = loadXib(data, table, zone);
  repairTopLevelObjects([table objectForKey:NSNibTopLevelObjects]);
  return loaded;
}

- (NSData *)dataForFile:(NSString *)path {
  return [replaced() dataForFile:path];
}

@end
