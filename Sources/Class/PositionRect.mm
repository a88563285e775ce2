#import "Class/PositionRect.h"

#import "Bridge/text.h"

#include "Core/file_tree.h"

@implementation PositionRect

@synthesize left;
@synthesize top;
@synthesize right;
@synthesize bottom;
@synthesize transparency;
@synthesize layer;

- (NSRect)getObjectFrameWithSize:(NSSize)size {
  return [PositionRect getObjectFrameWith:self OutlineSize:size];
}

- (void)saveToFile:(NSString *)path {
  (void)vireonix::core::replaceFile(vireonix::bridge::path(path),
                                    vireonix::core::positionText([self position]));
}

+ (NSRect)getObjectFrameWith:(PositionRect *)rect OutlineSize:(NSSize)size {
  if (rect == nil)
    return NSZeroRect;
  const auto frame = vireonix::core::frameOf([rect position], static_cast<float>(size.width),
                                             static_cast<float>(size.height));
  return NSMakeRect(frame.x, frame.y, frame.width, frame.height);
}

- (vireonix::core::Position)position {
  @synchronized(self) {
    return {[self left],   [self top],          [self right],
            [self bottom], [self transparency], [self layer]};
  }
}

- (void)setPosition:(const vireonix::core::Position &)position {
  @synchronized(self) {
    [self setLeft:position.left];
    [self setTop:position.top];
    [self setRight:position.right];
    [self setBottom:position.bottom];
    [self setTransparency:position.transparency];
    [self setLayer:position.layer];
  }
}

@end
