// Replaces methods of the toolkit's cells that do not ask the theme how to draw.
#pragma once

#import <Foundation/Foundation.h>

#include <objc/runtime.h>

namespace vireonix::host {

/// One replaced method. The theme's own mechanism for this (methods named _override...) does not
/// find the classes in the toolkit's version that we build for.
///   Replacement<NSRect, NSRect> titleRect;
///   NSRect paddedTitleRect(id cell, SEL, NSRect bounds) { return titleRect(cell, bounds); }
///   titleRect.install([NSTextFieldCell class], @selector(titleRectForBounds:), &paddedTitleRect);
template <typename Result, typename... Arguments> class Replacement {
public:
  using Function = Result (*)(id, SEL, Arguments...);

  /// Makes `function` the class's method, whether the class inherits it or has its own. To be
  /// called once.
  void install(Class owner, SEL selector, Function function) {
    Method method = class_getInstanceMethod(owner, selector);
    selector_ = selector;
    original_ = reinterpret_cast<Function>(method_getImplementation(method));
    const IMP replacement = reinterpret_cast<IMP>(function);
    if (!class_addMethod(owner, selector, replacement, method_getTypeEncoding(method)))
      method_setImplementation(method, replacement);
  }

  /// Calls the toolkit's own method.
  Result operator()(id receiver, Arguments... arguments) const {
    return original_(receiver, selector_, arguments...);
  }

private:
  SEL selector_ = nullptr;
  Function original_ = nullptr;
};

/// One call for each file that replaces methods.
void replaceButtonMethods();
void replaceFieldMethods();
void replaceScrollerMethods();
void replaceTableMethods();
void replaceAlertMethods();
void replaceComboMethods();
void replaceTitleMethods();
void replaceWindowMethods();

} // namespace vireonix::host
