#include "WebKit/engine/web_page.h"

#include "WebKit/engine/glib_loop.h"
#include "WebKit/engine/web_page_state.h"
#include "WebKit/engine/web_toolkit.h"

#include <algorithm>
#include <utility>

namespace vireonix::platform {
namespace {

WebKitSettings* makeSettings() {
  WebKitSettings* settings = webkit_settings_new();
  // The page reads the document that it shows from beside itself.
  webkit_settings_set_allow_file_access_from_file_urls(settings, TRUE);
  // The picture is read back into memory: a graphics card would only slow that down.
  webkit_settings_set_hardware_acceleration_policy(settings,
                                                   WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
  // Whether a window opens is the delegates' decision.
  webkit_settings_set_javascript_can_open_windows_automatically(settings, TRUE);
  webkit_settings_set_enable_page_cache(settings, FALSE);
  return settings;
}

// A drag that GTK started would take hold of the whole screen's pointer.
WebKitUserContentManager* makeContentManager() {
  WebKitUserContentManager* manager = webkit_user_content_manager_new();
  WebKitUserStyleSheet* sheet = webkit_user_style_sheet_new(
      "* { -webkit-user-drag: none !important; }", WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES,
      WEBKIT_USER_STYLE_LEVEL_USER, nullptr, nullptr);
  webkit_user_content_manager_add_style_sheet(manager, sheet);
  webkit_user_style_sheet_unref(sheet);
  return manager;
}

WebKitWebView* makeView(WebKitWebContext* context, WebKitWebView* opener) {
  WebKitSettings* settings = makeSettings();
  WebKitUserContentManager* manager = makeContentManager();
  const char* origin = opener == nullptr ? "web-context" : "related-view";
  gpointer originObject = opener == nullptr ? static_cast<gpointer>(context) : opener;
  gpointer view = g_object_new(WEBKIT_TYPE_WEB_VIEW, origin, originObject, "settings", settings,
                               "user-content-manager", manager, nullptr);
  g_object_unref(manager);
  g_object_unref(settings);
  return WEBKIT_WEB_VIEW(view);
}

// Also called when the process could not be started.
void processStarted(GObject* view, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<std::shared_ptr<ProcessStart>> start(
      static_cast<std::shared_ptr<ProcessStart>*>(data));
  if (JSCValue* value =
          webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, nullptr))
    g_object_unref(value);
  (*start)->done = true;
  if ((*start)->afterwards)
    (*start)->afterwards();
}

} // namespace

std::string text(const char* utf8) {
  return utf8 == nullptr ? std::string() : std::string(utf8);
}

std::unique_ptr<WebPage> WebPage::make(WebPageClient& client, const WebPage* opener) {
  if (!WebToolkit::shared().start())
    return nullptr;
  GlibLoop::shared().open();
  auto state = std::make_unique<State>(client);
  state->view = makeView(WebToolkit::shared().acquireContext(),
                         opener == nullptr ? nullptr : opener->state_->view);
  state->window = gtk_offscreen_window_new();
  gtk_container_add(GTK_CONTAINER(state->window), GTK_WIDGET(state->view));
  gtk_widget_show(GTK_WIDGET(state->view));
  gtk_drag_dest_unset(GTK_WIDGET(state->view));
  gtk_widget_realize(state->window);
  connectPolicySignals(*state);
  connectLoadSignals(*state);
  connectWindowSignals(*state);
  connectRefusals(*state);
  connectInputSignals(*state);
  connectPixelSignals(*state);
  return std::unique_ptr<WebPage>(new WebPage(std::move(state)));
}

WebPage::WebPage(std::unique_ptr<State> state) : state_(std::move(state)) {}

WebPage::~WebPage() {
  State& state = *state_;
  for (const std::weak_ptr<HeldDecision>& pending : state.decisions)
    if (const std::shared_ptr<HeldDecision> decision = pending.lock())
      decision->answer(PolicyAnswer::ignore);
  g_signal_handlers_disconnect_by_data(state.view, &state);
  g_signal_handlers_disconnect_by_data(state.window, &state);
  for (WebKitWebResource* resource : state.resources) {
    g_signal_handlers_disconnect_by_data(resource, &state);
    g_object_unref(resource);
  }
  gtk_widget_hide(state.window);
  // The page may be ending inside one of its own signals.
  const auto end = [window = state.window] {
    GlibLoop::shared().whenAtRest([window] {
      gtk_widget_destroy(window);
      WebToolkit::shared().releaseContext();
      GlibLoop::shared().close();
    });
  };
  // A page that ends while its process starts would leave WebKit's network process behind.
  if (state.start != nullptr && !state.start->done)
    state.start->afterwards = end;
  else
    end();
}

void WebPage::warmUp() {
  state_->start = std::make_shared<ProcessStart>();
  // WebKit starts the process for the first script as it does for the first load.
  webkit_web_view_evaluate_javascript(state_->view, "0", -1, nullptr, nullptr, nullptr,
                                      processStarted,
                                      new std::shared_ptr<ProcessStart>(state_->start));
}

void WebPage::load(const std::string& url) {
  state_->crashed = false;
  webkit_web_view_load_uri(state_->view, url.c_str());
}

void WebPage::loadHtml(const std::string& html, const std::string& baseUrl) {
  state_->crashed = false;
  webkit_web_view_load_html(state_->view, html.c_str(),
                            baseUrl.empty() ? nullptr : baseUrl.c_str());
}

void WebPage::stop() {
  webkit_web_view_stop_loading(state_->view);
}

void WebPage::reload() {
  state_->crashed = false;
  webkit_web_view_reload(state_->view);
}

std::string WebPage::url() const {
  return text(webkit_web_view_get_uri(state_->view));
}

std::string WebPage::title() const {
  return text(webkit_web_view_get_title(state_->view));
}

bool WebPage::isLoading() const {
  return webkit_web_view_is_loading(state_->view) != FALSE;
}

void WebPage::resize(int width, int height) {
  gtk_widget_set_size_request(GTK_WIDGET(state_->view), std::max(width, 1), std::max(height, 1));
}

void WebPage::setShown(bool shown) {
  gtk_widget_set_visible(state_->window, shown ? TRUE : FALSE);
}

void WebPage::edit(const char* command) {
  webkit_web_view_execute_editing_command(state_->view, command);
}

} // namespace vireonix::platform
