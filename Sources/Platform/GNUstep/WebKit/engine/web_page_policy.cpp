// Policy questions and new windows.
#include "WebKit/engine/web_page_state.h"

#include <algorithm>
#include <utility>

namespace vireonix::platform {
namespace {

using Kind = PolicyRequest::Kind;

MouseButton mouseButton(guint number) {
  switch (number) {
  case GDK_BUTTON_PRIMARY:
    return MouseButton::left;
  case GDK_BUTTON_MIDDLE:
    return MouseButton::middle;
  case GDK_BUTTON_SECONDARY:
    return MouseButton::right;
  default:
    return MouseButton::none;
  }
}

unsigned keyModifiers(guint state) {
  return ((state & GDK_SHIFT_MASK) != 0 ? kShiftKey : 0U) |
         ((state & GDK_CONTROL_MASK) != 0 ? kControlKey : 0U) |
         ((state & GDK_MOD1_MASK) != 0 ? kAlternateKey : 0U) |
         ((state & GDK_META_MASK) != 0 ? kCommandKey : 0U);
}

PolicyRequest navigationRequest(WebKitPolicyDecision* decision, Kind kind) {
  WebKitNavigationAction* action = webkit_navigation_policy_decision_get_navigation_action(
      WEBKIT_NAVIGATION_POLICY_DECISION(decision));
  PolicyRequest request;
  request.kind = kind;
  request.url = text(webkit_uri_request_get_uri(webkit_navigation_action_get_request(action)));
  request.navigationType = static_cast<int>(webkit_navigation_action_get_navigation_type(action));
  request.button = mouseButton(webkit_navigation_action_get_mouse_button(action));
  request.modifiers = keyModifiers(webkit_navigation_action_get_modifiers(action));
  request.frameName = text(webkit_navigation_action_get_frame_name(action));
  return request;
}

PolicyRequest contentRequest(WebKitPolicyDecision* decision) {
  WebKitResponsePolicyDecision* response = WEBKIT_RESPONSE_POLICY_DECISION(decision);
  PolicyRequest request;
  request.kind = Kind::content;
  request.url =
      text(webkit_uri_request_get_uri(webkit_response_policy_decision_get_request(response)));
  request.mimeType = text(
      webkit_uri_response_get_mime_type(webkit_response_policy_decision_get_response(response)));
  request.canBeShown = webkit_response_policy_decision_is_mime_type_supported(response) != FALSE;
  return request;
}

PolicyRequest policyRequest(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
  switch (type) {
  case WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION:
    return navigationRequest(decision, Kind::newWindow);
  case WEBKIT_POLICY_DECISION_TYPE_RESPONSE:
    return contentRequest(decision);
  case WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION:
    break;
  }
  return navigationRequest(decision, Kind::navigation);
}

gboolean decidePolicy(WebKitWebView*, WebKitPolicyDecision* decision, WebKitPolicyDecisionType type,
                      gpointer data) {
  auto& state = *static_cast<WebPage::State*>(data);
  auto held = std::make_shared<HeldDecision>(decision);
  auto& pending = state.decisions;
  pending.erase(std::remove_if(pending.begin(), pending.end(),
                               [](const auto& entry) { return entry.expired(); }),
                pending.end());
  pending.push_back(held);
  state.client->decide(policyRequest(decision, type), std::move(held));
  return TRUE;
}

} // namespace

HeldDecision::HeldDecision(WebKitPolicyDecision* decision)
    : decision_(WEBKIT_POLICY_DECISION(g_object_ref(decision))) {}

HeldDecision::~HeldDecision() {
  HeldDecision::answer(PolicyAnswer::ignore);
}

void HeldDecision::answer(PolicyAnswer answer) {
  WebKitPolicyDecision* decision = std::exchange(decision_, nullptr);
  if (decision == nullptr)
    return;
  switch (answer) {
  case PolicyAnswer::use:
    webkit_policy_decision_use(decision);
    break;
  case PolicyAnswer::ignore:
    webkit_policy_decision_ignore(decision);
    break;
  case PolicyAnswer::download:
    webkit_policy_decision_download(decision);
    break;
  }
  g_object_unref(decision);
}

void connectPolicySignals(WebPage::State& state) {
  g_signal_connect(state.view, "decide-policy", G_CALLBACK(decidePolicy), &state);
}

} // namespace vireonix::platform
