// What the engine makes for itself while it makes a view is lost with each view; the view is not.
#import "support/web_view_construction.h"

#import <Foundation/Foundation.h>

#include "WebKit/engine/web_toolkit.h"

#include <objc/runtime.h>
#include <utility>

namespace {

using Construct = void (*)(GObject *);
Construct realConstruct = nullptr;
IMP realInit = nullptr;

[[clang::disable_tail_calls]] void constructWebKitWebView(GObject *view) {
  realConstruct(view);
}

// GTK must run before the class of the view can be had.
void replaceConstruction() {
  if (realConstruct != nullptr || !vireonix::platform::WebToolkit::shared().start())
    return;
  GObjectClass *const views = G_OBJECT_CLASS(g_type_class_ref(WEBKIT_TYPE_WEB_VIEW));
  realConstruct = std::exchange(views->constructed, constructWebKitWebView);
}

id initAfterNaming(id engine, SEL selector, id view, id opener) {
  replaceConstruction();
  return reinterpret_cast<id (*)(id, SEL, id, id)>(realInit)(engine, selector, view, opener);
}

} // namespace

void vireonix::test::nameViewConstruction() {
  Method initialiser =
      class_getInstanceMethod(objc_getClass("WebViewEngine"), @selector(initWithView:opener:));
  realInit = method_setImplementation(initialiser, reinterpret_cast<IMP>(initAfterNaming));
}
