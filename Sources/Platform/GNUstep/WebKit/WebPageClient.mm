#import "WebKit/WebViewEngine.h"

#include <utility>

namespace {

using namespace vireonix::platform;

// Keeps the engine until the call is over, whatever the delegates release meanwhile; an exception
// ends here.
template <class Call> void guarded(WebViewEngine *engine, const Call &call) {
  [engine retain];
  @autoreleasepool {
    @try {
      call();
    } @catch (id exception) {
      NSLog(@"WebView: exception in a delegate: %@", exception);
    }
  }
  [engine release];
}

class EngineClient final : public WebPageClient {
public:
  explicit EngineClient(WebViewEngine *engine) : engine_(engine) {}

  void decide(const PolicyRequest &request, std::shared_ptr<PolicyDecision> decision) override {
    WebViewEngine *engine = engine_;
    guarded(engine, [&] { [engine decide:request decision:std::move(decision)]; });
  }

  void loadStepped(LoadStep step) override {
    WebViewEngine *engine = engine_;
    guarded(engine, [&] { [engine loadStepped:step]; });
  }

  void loadFailed(const LoadFailure &failure) override {
    WebViewEngine *engine = engine_;
    guarded(engine, [&] { [engine loadFailed:failure]; });
  }

  void titleChanged(const std::string &title) override {
    WebViewEngine *engine = engine_;
    guarded(engine, [&] { [engine titleChanged:title]; });
  }

  void resourceStepped(ResourceStep step, std::uint64_t resource, const std::string &url,
                       const std::string &error) override {
    WebViewEngine *engine = engine_;
    guarded(engine, [&] { [engine resource:resource stepped:step url:url error:error]; });
  }

  WebPage *openWindow(const std::string &url) override {
    WebViewEngine *engine = engine_;
    WebPage *page = nullptr;
    guarded(engine, [&] { page = [engine openWindow:url]; });
    return page;
  }

  void windowIsReady() override {
    WebViewEngine *engine = engine_;
    guarded(engine, [&] { [engine windowIsReady]; });
  }

  void windowWantsToClose() override {
    WebViewEngine *engine = engine_;
    guarded(engine, [&] { [engine windowWantsToClose]; });
  }

  void pixelsChanged() override {
    WebViewEngine *engine = engine_;
    guarded(engine, [&] { [engine pixelsChanged]; });
  }

  void cursorChanged(PageCursor cursor) override {
    WebViewEngine *engine = engine_;
    guarded(engine, [&] { [engine cursorChanged:cursor]; });
  }

  void focusLeft(bool forward) override {
    WebViewEngine *engine = engine_;
    guarded(engine, [&] { [engine focusLeft:forward ? YES : NO]; });
  }

  void processEnded() override {
    WebViewEngine *engine = engine_;
    guarded(engine, [&] { [engine processEnded]; });
  }

private:
  WebViewEngine *engine_;
};

} // namespace

std::unique_ptr<WebPageClient> makeWebPageClient(WebViewEngine *engine) {
  return std::make_unique<EngineClient>(engine);
}
