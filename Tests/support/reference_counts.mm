// Tells the thread sanitizer of what it cannot see in Foundation, which is built without it:
// reference counts order threads. What one thread did to an object before it let go of it has
// happened when another thread gives up the last reference and frees the object.
#import <Foundation/Foundation.h>

#include <objc/runtime.h>

#include <sanitizer/tsan_interface.h>

namespace {

IMP realRelease = nullptr;

void releaseInOrder(id object, SEL selector) {
  __tsan_acquire(object);
  __tsan_release(object);
  reinterpret_cast<void (*)(id, SEL)>(realRelease)(object, selector);
}

} // namespace

/// Takes the place of NSObject's `release` before any thread is started.
@interface OrderedReferenceCounts : NSObject
@end

@implementation OrderedReferenceCounts
+ (void)load {
  realRelease =
      method_setImplementation(class_getInstanceMethod([NSObject class], @selector(release)),
                               reinterpret_cast<IMP>(releaseInOrder));
}
@end
