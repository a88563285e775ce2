// Pointer, wheel and keyboard: AppKit's events handed on as GDK's.
#include "WebKit/engine/web_page_state.h"

namespace vireonix::platform {
namespace {

// An element at one end of the page, which has the focus until a key takes it on.
constexpr const char* kFocusStart = R"(
  globalThis.end = document.createElement('span');
  end.tabIndex = -1;
  document.documentElement.prepend(end);
  end.focus({preventScroll: true});)";
constexpr const char* kFocusEnd = R"(
  globalThis.end = document.createElement('span');
  end.tabIndex = -1;
  document.documentElement.append(end);
  end.focus({preventScroll: true});)";
constexpr const char* kRemoveEnd = "end.remove()";

struct Position {
  double x;
  double y;
};

guint32 now() {
  constexpr gint64 kMicrosecondsInMillisecond = 1000;
  return static_cast<guint32>(g_get_monotonic_time() / kMicrosecondsInMillisecond);
}

guint gdkModifiers(unsigned modifiers) {
  return ((modifiers & kShiftKey) != 0 ? GDK_SHIFT_MASK : 0U) |
         ((modifiers & kControlKey) != 0 ? GDK_CONTROL_MASK : 0U) |
         ((modifiers & kAlternateKey) != 0 ? GDK_MOD1_MASK : 0U) |
         ((modifiers & kCommandKey) != 0 ? GDK_META_MASK : 0U);
}

guint gdkButton(MouseButton button) {
  switch (button) {
  case MouseButton::middle:
    return GDK_BUTTON_MIDDLE;
  case MouseButton::right:
    return GDK_BUTTON_SECONDARY;
  case MouseButton::left:
  case MouseButton::none:
    break;
  }
  return GDK_BUTTON_PRIMARY;
}

guint buttonMask(MouseButton button) {
  return GDK_BUTTON1_MASK << (gdkButton(button) - 1);
}

GdkEvent* makeEvent(GdkEventType type, GtkWidget* widget, bool keyboard) {
  GdkEvent* event = gdk_event_new(type);
  event->any.window = GDK_WINDOW(g_object_ref(gtk_widget_get_window(widget)));
  event->any.send_event = TRUE;
  GdkSeat* seat = gdk_display_get_default_seat(gdk_display_get_default());
  gdk_event_set_device(event, keyboard ? gdk_seat_get_keyboard(seat) : gdk_seat_get_pointer(seat));
  return event;
}

GdkEvent* makePointerEvent(const WebPage::State& state, GdkEventType type) {
  return makeEvent(type, GTK_WIDGET(state.view), false);
}

void sendAndFree(GdkEvent* event) {
  gtk_main_do_event(event);
  gdk_event_free(event);
}

// `fields` is the part of an event that says where and when.
template <class Fields> void place(Fields& fields, Position position) {
  fields.time = now();
  fields.x = position.x;
  fields.y = position.y;
  fields.x_root = position.x;
  fields.y_root = position.y;
}

void sendCrossing(const WebPage::State& state, GdkEventType type, Position position) {
  GdkEvent* event = makePointerEvent(state, type);
  place(event->crossing, position);
  event->crossing.mode = GDK_CROSSING_NORMAL;
  event->crossing.detail = GDK_NOTIFY_NONLINEAR;
  event->crossing.state = state.buttons;
  sendAndFree(event);
}

void sendButton(const WebPage::State& state, GdkEventType type, MouseButton button,
                Position position, unsigned modifiers) {
  GdkEvent* event = makePointerEvent(state, type);
  place(event->button, position);
  event->button.button = gdkButton(button);
  event->button.state = gdkModifiers(modifiers) | state.buttons;
  sendAndFree(event);
}

guint16 hardwareKey(guint value) {
  GdkKeymapKey* keys = nullptr;
  gint count = 0;
  GdkKeymap* keymap = gdk_keymap_get_for_display(gdk_display_get_default());
  if (gdk_keymap_get_entries_for_keyval(keymap, value, &keys, &count) == FALSE)
    return 0;
  const auto key = static_cast<guint16>(count > 0 ? keys[0].keycode : 0);
  g_free(keys);
  return key;
}

struct Key {
  guint value;
  guint16 hardware;
  bool modifier;
};

void sendKeyEvent(const WebPage::State& state, bool pressed, Key key, unsigned modifiers) {
  GdkEvent* event = makeEvent(pressed ? GDK_KEY_PRESS : GDK_KEY_RELEASE, state.window, true);
  event->key.time = now();
  event->key.state = gdkModifiers(modifiers);
  event->key.keyval = key.value;
  event->key.hardware_keycode = key.hardware;
  event->key.is_modifier = key.modifier ? 1 : 0;
  event->key.string = g_strdup("");
  // Not through gtk_main_do_event(): a grab of GTK's must not take the key from this page.
  gtk_widget_event(state.window, event);
  gdk_event_free(event);
}

// Runs a script that neither meets the page's own ones nor answers.
void runApart(const WebPage::State& state, const char* script) {
  webkit_web_view_evaluate_javascript(state.view, script, -1, "vireonix", nullptr, nullptr, nullptr,
                                      nullptr);
}

void hitTargetChanged(WebKitWebView*, WebKitHitTestResult* hit, guint, gpointer data) {
  auto& state = *static_cast<WebPage::State*>(data);
  PageCursor cursor = PageCursor::arrow;
  if (webkit_hit_test_result_context_is_link(hit) != FALSE)
    cursor = PageCursor::hand;
  else if (webkit_hit_test_result_context_is_editable(hit) != FALSE)
    cursor = PageCursor::text;
  if (cursor == state.cursor)
    return;
  state.cursor = cursor;
  state.client->cursorChanged(cursor);
}

// The page is all that its window holds: a focus that moves on leaves the page.
gboolean focusMoves(GtkWidget*, GtkDirectionType direction, gpointer data) {
  auto& state = *static_cast<WebPage::State*>(data);
  const bool byTab = direction == GTK_DIR_TAB_FORWARD || direction == GTK_DIR_TAB_BACKWARD;
  if (byTab && state.focused)
    state.client->focusLeft(direction == GTK_DIR_TAB_FORWARD);
  return TRUE;
}

} // namespace

void WebPage::movePointer(double x, double y, unsigned modifiers) {
  GdkEvent* event = makePointerEvent(*state_, GDK_MOTION_NOTIFY);
  place(event->motion, {x, y});
  event->motion.state = gdkModifiers(modifiers) | state_->buttons;
  sendAndFree(event);
}

void WebPage::pointerEntered(double x, double y) {
  sendCrossing(*state_, GDK_ENTER_NOTIFY, {x, y});
}

void WebPage::pointerLeft(double x, double y) {
  sendCrossing(*state_, GDK_LEAVE_NOTIFY, {x, y});
}

void WebPage::pressButton(MouseButton button, int clicks, double x, double y, unsigned modifiers) {
  // WebKit counts a press by itself, by its time, but counts on with each of the second kind.
  sendButton(*state_, clicks > 1 ? GDK_2BUTTON_PRESS : GDK_BUTTON_PRESS, button, {x, y}, modifiers);
  state_->buttons |= buttonMask(button);
}

void WebPage::releaseButton(MouseButton button, double x, double y, unsigned modifiers) {
  sendButton(*state_, GDK_BUTTON_RELEASE, button, {x, y}, modifiers);
  state_->buttons &= ~buttonMask(button);
}

void WebPage::scroll(double x, double y, double deltaX, double deltaY, unsigned modifiers) {
  GdkEvent* event = makePointerEvent(*state_, GDK_SCROLL);
  place(event->scroll, {x, y});
  event->scroll.state = gdkModifiers(modifiers) | state_->buttons;
  event->scroll.direction = GDK_SCROLL_SMOOTH;
  event->scroll.delta_x = deltaX;
  event->scroll.delta_y = deltaY;
  sendAndFree(event);
}

bool WebPage::takesKeys() const {
  return state_->hasPage;
}

void WebPage::sendKey(bool pressed, char32_t character, unsigned keyCode, unsigned modifiers) {
  state_->modifiers = modifiers;
  const guint value = keyValue(character);
  sendKeyEvent(*state_, pressed,
               {value, keyCode != 0 ? static_cast<guint16>(keyCode) : hardwareKey(value), false},
               modifiers);
}

void WebPage::setModifiers(unsigned modifiers) {
  constexpr struct {
    KeyModifier modifier;
    guint value;
  } kKeys[] = {{kShiftKey, GDK_KEY_Shift_L},
               {kControlKey, GDK_KEY_Control_L},
               {kAlternateKey, GDK_KEY_Alt_L},
               {kCommandKey, GDK_KEY_Meta_L}};
  const unsigned before = state_->modifiers;
  state_->modifiers = modifiers;
  for (const auto& key : kKeys)
    if (((before ^ modifiers) & key.modifier) != 0)
      sendKeyEvent(*state_, (modifiers & key.modifier) != 0,
                   {key.value, hardwareKey(key.value), true}, before);
}

void WebPage::setFocused(bool focused) {
  if (focused == state_->focused)
    return;
  state_->focused = focused;
  if (focused)
    gtk_widget_grab_focus(GTK_WIDGET(state_->view));
  GdkEvent* event = makeEvent(GDK_FOCUS_CHANGE, state_->window, true);
  event->focus_change.in = focused ? 1 : 0;
  gtk_widget_event(state_->window, event);
  gdk_event_free(event);
}

void WebPage::focusEnd(bool first) {
  if (!takesKeys())
    return;
  setFocused(true);
  // WebKit's view gives none of its page's elements the focus. A Tab key does, but goes on from
  // where the keyboard was in the page last: so it starts from an element at the page's very end.
  runApart(*state_, first ? kFocusStart : kFocusEnd);
  const guint value = first ? GDK_KEY_Tab : GDK_KEY_ISO_Left_Tab;
  const guint16 hardware = hardwareKey(GDK_KEY_Tab);
  for (const bool pressed : {true, false})
    sendKeyEvent(*state_, pressed, {value, hardware, false}, first ? 0U : kShiftKey);
  runApart(*state_, kRemoveEnd);
}

void connectInputSignals(WebPage::State& state) {
  g_signal_connect(state.view, "mouse-target-changed", G_CALLBACK(hitTargetChanged), &state);
  g_signal_connect(state.window, "focus", G_CALLBACK(focusMoves), &state);
}

} // namespace vireonix::platform
