// Gives methods of the platform a name in the leak check's stacks: the platform's libraries have no
// symbols, and to name a whole library would hide what is lost of the things it makes for ours.
// Each method here is known to lose memory, and Tests/support/lsan.supp has the line that hides it.
#import "support/before_application.h"
#import "support/web_view_construction.h"

#import <Foundation/Foundation.h>

#include <objc/runtime.h>
#include <unistd.h>

namespace {

struct NSComboBoxCellLoadButtonCell {};
struct GSXib5KeyedUnarchiverInitForReadingWithData {};
struct GSXibElementAlloc {};
struct NSStringPropertyList {};
struct NSBundleLoadMissingNibFile {};
struct NSSecureTextFieldCellReplacementAttributedString {};

// A method that is called through a function which has `Name` in its own name. The method takes
// four arguments at most, and neither takes nor answers a number with a point or a structure.
template <class Name> struct Named {
  static inline IMP method = nullptr;

  // The function must have its own place in the stack.
  [[gnu::noinline, clang::disable_tail_calls]] static id call(id object, SEL selector, id a, id b,
                                                              id c, id d) {
    using Call = id (*)(id, SEL, id, id, id, id);
    return reinterpret_cast<Call>(method)(object, selector, a, b, c, d);
  }

  // In the class alone, also when it inherits the method.
  static void install(Class holder, SEL selector, IMP instead = reinterpret_cast<IMP>(call)) {
    Method known = class_getInstanceMethod(holder, selector);
    if (known == nullptr)
      return;
    method = method_getImplementation(known);
    if (!class_addMethod(holder, selector, instead, method_getTypeEncoding(known)))
      method_setImplementation(known, instead);
  }
};

Class classNamed(const char *name) {
  return objc_getClass(name);
}

Class metaclassNamed(const char *name) {
  return object_getClass(objc_getClass(name));
}

// Named only where it loses something.
id loadNibFile(id bundle, SEL selector, id path, id names, id zone) {
  using MissingNib = Named<NSBundleLoadMissingNibFile>;
  using Call = id (*)(id, SEL, id, id, id);
  if (access([path fileSystemRepresentation], F_OK) != 0)
    return MissingNib::call(bundle, selector, path, names, zone, nil);
  return reinterpret_cast<Call>(MissingNib::method)(bundle, selector, path, names, zone);
}

} // namespace

void vireonix::test::beforeLeakCheck() {
  Named<NSComboBoxCellLoadButtonCell>::install(classNamed("NSComboBoxCell"),
                                               @selector(_loadButtonCell));
  Named<GSXib5KeyedUnarchiverInitForReadingWithData>::install(classNamed("GSXib5KeyedUnarchiver"),
                                                              @selector(initForReadingWithData:));
  Named<GSXibElementAlloc>::install(metaclassNamed("GSXibElement"), @selector(alloc));
  Named<NSStringPropertyList>::install(classNamed("NSString"), @selector(propertyList));
  Named<NSBundleLoadMissingNibFile>::install(metaclassNamed("NSBundle"),
                                             @selector(loadNibFile:externalNameTable:withZone:),
                                             reinterpret_cast<IMP>(loadNibFile));
  Named<NSSecureTextFieldCellReplacementAttributedString>::install(
      classNamed("NSSecureTextFieldCell"), NSSelectorFromString(@"_replacementAttributedString"));
  nameViewConstruction();
}
