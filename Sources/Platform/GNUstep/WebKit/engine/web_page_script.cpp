// Scripts that are run from outside the page.
#include "WebKit/engine/glib_loop.h"
#include "WebKit/engine/web_page_state.h"

namespace vireonix::platform {
namespace {

struct Evaluation {
  bool done = false;
  std::optional<std::string> result;
};

// The engine holds one share until it calls back, however long that takes.
using SharedEvaluation = std::shared_ptr<Evaluation>;

std::optional<std::string> textOf(JSCValue* value) {
  if (jsc_value_is_undefined(value) != FALSE || jsc_value_is_null(value) != FALSE)
    return std::nullopt;
  char* characters = jsc_value_to_string(value);
  std::string result = text(characters);
  g_free(characters);
  return result;
}

void evaluated(GObject* view, GAsyncResult* answer, gpointer data) {
  const std::unique_ptr<SharedEvaluation> share(static_cast<SharedEvaluation*>(data));
  Evaluation& evaluation = **share;
  GError* error = nullptr;
  JSCValue* value =
      webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), answer, &error);
  if (value != nullptr) {
    evaluation.result = textOf(value);
    g_object_unref(value);
  }
  g_clear_error(&error);
  evaluation.done = true;
}

} // namespace

std::optional<std::string> WebPage::evaluate(const std::string& script, double seconds) {
  const auto evaluation = std::make_shared<Evaluation>();
  webkit_web_view_evaluate_javascript(state_->view, script.data(),
                                      static_cast<gssize>(script.size()), nullptr, nullptr, nullptr,
                                      evaluated, new SharedEvaluation(evaluation));
  // From here on this page may be gone: nothing below touches it.
  GlibLoop::shared().runUntil([&evaluation] { return evaluation->done; }, seconds);
  return evaluation->done ? evaluation->result : std::nullopt;
}

} // namespace vireonix::platform
