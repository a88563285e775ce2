// Loading: the steps of a page, its resources and the end of its process.
#include "WebKit/engine/web_page_state.h"

#include <algorithm>

namespace vireonix::platform {
namespace {

using Cause = LoadFailure::Cause;

Cause failureCause(const GError* error) {
  if (g_error_matches(error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED) != FALSE)
    return Cause::cancelled;
  if (g_error_matches(error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_FILE_DOES_NOT_EXIST) !=
          FALSE ||
      g_error_matches(error, G_IO_ERROR, G_IO_ERROR_NOT_FOUND) != FALSE)
    return Cause::fileMissing;
  if (error->domain == WEBKIT_POLICY_ERROR)
    return Cause::refusedByPolicy;
  return Cause::other;
}

void loadChanged(WebKitWebView*, WebKitLoadEvent event, gpointer data) {
  auto& state = *static_cast<WebPage::State*>(data);
  switch (event) {
  case WEBKIT_LOAD_STARTED:
    state.committed = false;
    state.failed = false;
    state.client->loadStepped(LoadStep::started);
    break;
  case WEBKIT_LOAD_REDIRECTED:
    state.client->loadStepped(LoadStep::redirected);
    break;
  case WEBKIT_LOAD_COMMITTED:
    state.committed = true;
    state.hasPage = true;
    state.client->loadStepped(LoadStep::committed);
    break;
  case WEBKIT_LOAD_FINISHED:
    // WebKit reports a load that failed as finished, too.
    if (!state.failed)
      state.client->loadStepped(LoadStep::finished);
    break;
  }
}

gboolean loadFailed(WebKitWebView*, WebKitLoadEvent, const char* url, const GError* error,
                    gpointer data) {
  auto& state = *static_cast<WebPage::State*>(data);
  state.failed = true;
  LoadFailure failure;
  failure.cause = failureCause(error);
  failure.url = text(url);
  failure.message = text(error->message);
  failure.committed = state.committed;
  state.client->loadFailed(failure);
  // No page of the engine's own that describes the error.
  return TRUE;
}

void titleChanged(WebKitWebView* view, GParamSpec*, gpointer data) {
  static_cast<WebPage::State*>(data)->client->titleChanged(text(webkit_web_view_get_title(view)));
}

void endResource(WebPage::State& state, WebKitWebResource* resource, ResourceStep step,
                 const std::string& error) {
  const auto position = std::find(state.resources.begin(), state.resources.end(), resource);
  // WebKit reports a resource that failed as finished, too.
  if (position == state.resources.end())
    return;
  state.resources.erase(position);
  g_signal_handlers_disconnect_by_data(resource, &state);
  const std::string url = text(webkit_web_resource_get_uri(resource));
  const auto number = reinterpret_cast<std::uintptr_t>(resource);
  state.client->resourceStepped(step, number, url, error);
  g_object_unref(resource);
}

void resourceFinished(WebKitWebResource* resource, gpointer data) {
  endResource(*static_cast<WebPage::State*>(data), resource, ResourceStep::finished, {});
}

void resourceFailed(WebKitWebResource* resource, const GError* error, gpointer data) {
  endResource(*static_cast<WebPage::State*>(data), resource, ResourceStep::failed,
              text(error->message));
}

void resourceStarted(WebKitWebView*, WebKitWebResource* resource, WebKitURIRequest* request,
                     gpointer data) {
  auto& state = *static_cast<WebPage::State*>(data);
  state.resources.push_back(WEBKIT_WEB_RESOURCE(g_object_ref(resource)));
  g_signal_connect(resource, "finished", G_CALLBACK(resourceFinished), &state);
  g_signal_connect(resource, "failed", G_CALLBACK(resourceFailed), &state);
  state.client->resourceStepped(ResourceStep::started, reinterpret_cast<std::uintptr_t>(resource),
                                text(webkit_uri_request_get_uri(request)), {});
}

void processEnded(WebKitWebView*, WebKitWebProcessTerminationReason, gpointer data) {
  auto& state = *static_cast<WebPage::State*>(data);
  state.crashed = true;
  state.hasPage = false;
  state.buttons = 0;
  state.client->processEnded();
}

} // namespace

void connectLoadSignals(WebPage::State& state) {
  g_signal_connect(state.view, "load-changed", G_CALLBACK(loadChanged), &state);
  g_signal_connect(state.view, "load-failed", G_CALLBACK(loadFailed), &state);
  g_signal_connect(state.view, "notify::title", G_CALLBACK(titleChanged), &state);
  g_signal_connect(state.view, "resource-load-started", G_CALLBACK(resourceStarted), &state);
  g_signal_connect(state.view, "web-process-terminated", G_CALLBACK(processEnded), &state);
}

} // namespace vireonix::platform
