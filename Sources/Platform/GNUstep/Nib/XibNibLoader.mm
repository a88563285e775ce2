#import "Nib/XibNibLoader.h"

#include <algorithm>
#include <string_view>

namespace {

// The document element stands within this many bytes, behind the XML declaration and comments.
constexpr std::size_t kHeadSize = 1024;
constexpr std::string_view kXibMark = "com.apple.InterfaceBuilder";

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
  GSModelLoader *loader =
      isXibDocument(data) ? [GSModelLoaderFactory modelLoaderForFileType:@"xib"] : replaced();
  return [loader loadModelData:data externalNameTable:context withZone:zone];
}

- (NSData *)dataForFile:(NSString *)path {
  return [replaced() dataForFile:path];
}

@end
