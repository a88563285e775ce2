// New windows, and all that a page may ask of a person and does not get here.
#include "WebKit/engine/web_page_state.h"

namespace vireonix::platform {
namespace {

GtkWidget* createWindow(WebKitWebView*, WebKitNavigationAction* action, gpointer data) {
  auto& state = *static_cast<WebPage::State*>(data);
  const std::string url =
      text(webkit_uri_request_get_uri(webkit_navigation_action_get_request(action)));
  const WebPage* page = state.client->openWindow(url);
  return page == nullptr ? nullptr : GTK_WIDGET(WebPage::State::viewOf(*page));
}

void windowIsReady(WebKitWebView*, gpointer data) {
  static_cast<WebPage::State*>(data)->client->windowIsReady();
}

void windowWantsToClose(WebKitWebView*, gpointer data) {
  static_cast<WebPage::State*>(data)->client->windowWantsToClose();
}

// A page never holds up its host: an alert is dismissed, a question answered with "no", and
// leaving the page is always allowed.
gboolean answerDialog(WebKitWebView*, WebKitScriptDialog* dialog, gpointer) {
  const WebKitScriptDialogType type = webkit_script_dialog_get_dialog_type(dialog);
  if (type == WEBKIT_SCRIPT_DIALOG_CONFIRM)
    webkit_script_dialog_confirm_set_confirmed(dialog, FALSE);
  if (type == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM)
    webkit_script_dialog_confirm_set_confirmed(dialog, TRUE);
  return TRUE;
}

gboolean denyPermission(WebKitWebView*, WebKitPermissionRequest* request, gpointer) {
  webkit_permission_request_deny(request);
  return TRUE;
}

gboolean cancelFileChooser(WebKitWebView*, WebKitFileChooserRequest* request, gpointer) {
  webkit_file_chooser_request_cancel(request);
  return TRUE;
}

gboolean cancelAuthentication(WebKitWebView*, WebKitAuthenticationRequest* request, gpointer) {
  webkit_authentication_request_cancel(request);
  return TRUE;
}

gboolean cancelColourChooser(WebKitWebView*, WebKitColorChooserRequest* request, gpointer) {
  webkit_color_chooser_request_cancel(request);
  return TRUE;
}

gboolean closeOptionMenu(WebKitWebView*, WebKitOptionMenu* menu, GdkEvent*, GdkRectangle*,
                         gpointer) {
  webkit_option_menu_close(menu);
  return TRUE;
}

gboolean hideContextMenu(WebKitWebView*, WebKitContextMenu*, GdkEvent*, WebKitHitTestResult*,
                         gpointer) {
  return TRUE;
}

gboolean refuseFullScreen(WebKitWebView*, gpointer) {
  return TRUE;
}

gboolean refusePrinting(WebKitWebView*, WebKitPrintOperation*, gpointer) {
  return TRUE;
}

gboolean refuseNotification(WebKitWebView*, WebKitNotification*, gpointer) {
  return TRUE;
}

// GTK would show the page's hints in windows of its own, placed as if the page were on the screen.
gboolean hideTooltip(GtkWidget* view, gint, gint, gboolean, GtkTooltip*, gpointer) {
  g_signal_stop_emission_by_name(view, "query-tooltip");
  return FALSE;
}

} // namespace

void connectWindowSignals(WebPage::State& state) {
  g_signal_connect(state.view, "create", G_CALLBACK(createWindow), &state);
  g_signal_connect(state.view, "ready-to-show", G_CALLBACK(windowIsReady), &state);
  g_signal_connect(state.view, "close", G_CALLBACK(windowWantsToClose), &state);
}

void connectRefusals(WebPage::State& state) {
  WebKitWebView* view = state.view;
  g_signal_connect(view, "script-dialog", G_CALLBACK(answerDialog), &state);
  g_signal_connect(view, "permission-request", G_CALLBACK(denyPermission), &state);
  g_signal_connect(view, "run-file-chooser", G_CALLBACK(cancelFileChooser), &state);
  g_signal_connect(view, "run-color-chooser", G_CALLBACK(cancelColourChooser), &state);
  g_signal_connect(view, "authenticate", G_CALLBACK(cancelAuthentication), &state);
  g_signal_connect(view, "show-option-menu", G_CALLBACK(closeOptionMenu), &state);
  g_signal_connect(view, "context-menu", G_CALLBACK(hideContextMenu), &state);
  g_signal_connect(view, "enter-fullscreen", G_CALLBACK(refuseFullScreen), &state);
  g_signal_connect(view, "print", G_CALLBACK(refusePrinting), &state);
  g_signal_connect(view, "show-notification", G_CALLBACK(refuseNotification), &state);
  g_signal_connect(view, "query-tooltip", G_CALLBACK(hideTooltip), &state);
}

} // namespace vireonix::platform
