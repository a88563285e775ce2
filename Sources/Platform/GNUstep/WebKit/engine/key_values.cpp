// AppKit's characters and function keys as keysyms.
#include "WebKit/engine/web_page_state.h"

namespace vireonix::platform {
namespace {

struct KeyName {
  char32_t character;
  guint value;
};

// The codes from 0xF700 are AppKit's (NSEvent.h) and the same on every platform.
constexpr char32_t kFirstNumberedKey = 0xF704;
constexpr char32_t kLastNumberedKey = 0xF726;

constexpr KeyName kNames[] = {
    {0x03, GDK_KEY_KP_Enter},      {0x08, GDK_KEY_BackSpace}, {0x09, GDK_KEY_Tab},
    {0x0A, GDK_KEY_Return},        {0x0D, GDK_KEY_Return},    {0x19, GDK_KEY_ISO_Left_Tab},
    {0x1B, GDK_KEY_Escape},        {0x7F, GDK_KEY_BackSpace}, {0xF700, GDK_KEY_Up},
    {0xF701, GDK_KEY_Down},        {0xF702, GDK_KEY_Left},    {0xF703, GDK_KEY_Right},
    {0xF727, GDK_KEY_Insert},      {0xF728, GDK_KEY_Delete},  {0xF729, GDK_KEY_Home},
    {0xF72A, GDK_KEY_Begin},       {0xF72B, GDK_KEY_End},     {0xF72C, GDK_KEY_Page_Up},
    {0xF72D, GDK_KEY_Page_Down},   {0xF72E, GDK_KEY_Print},   {0xF72F, GDK_KEY_Scroll_Lock},
    {0xF730, GDK_KEY_Pause},       {0xF731, GDK_KEY_Sys_Req}, {0xF732, GDK_KEY_Break},
    {0xF735, GDK_KEY_Menu},        {0xF738, GDK_KEY_Print},   {0xF739, GDK_KEY_Clear},
    {0xF741, GDK_KEY_Select},      {0xF742, GDK_KEY_Execute}, {0xF743, GDK_KEY_Undo},
    {0xF744, GDK_KEY_Redo},        {0xF745, GDK_KEY_Find},    {0xF746, GDK_KEY_Help},
    {0xF747, GDK_KEY_Mode_switch},
};

} // namespace

guint keyValue(char32_t character) {
  if (character >= kFirstNumberedKey && character <= kLastNumberedKey)
    return GDK_KEY_F1 + (character - kFirstNumberedKey);
  for (const KeyName& name : kNames)
    if (name.character == character)
      return name.value;
  return gdk_unicode_to_keyval(character);
}

} // namespace vireonix::platform
