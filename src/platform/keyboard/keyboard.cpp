#include "platform/keyboard/keyboard.h"

#include <QGuiApplication>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace jxc {

bool isEscapeDown() {
  const auto* application = qApp->nativeInterface<QNativeInterface::QX11Application>();
  if (application == nullptr || QGuiApplication::applicationState() != Qt::ApplicationActive) return false;
  xcb_connection_t* const x = application->connection();
  constexpr xcb_keysym_t escape = 0xff1b;
  static const int code = [x] {
    const xcb_setup_t* const setup = xcb_get_setup(x);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    const std::unique_ptr<xcb_get_keyboard_mapping_reply_t, decltype(&std::free)> mapping(
        xcb_get_keyboard_mapping_reply(
            x, xcb_get_keyboard_mapping(x, setup->min_keycode, static_cast<std::uint8_t>(count)), nullptr),
        &std::free);
    if (!mapping) return -1;
    const xcb_keysym_t* const signs = xcb_get_keyboard_mapping_keysyms(mapping.get());
    for (int key = 0; key < count; ++key)
      if (signs[key * mapping->keysyms_per_keycode] == escape) return setup->min_keycode + key;
    return -1;
  }();
  const std::unique_ptr<xcb_query_keymap_reply_t, decltype(&std::free)> down(
      xcb_query_keymap_reply(x, xcb_query_keymap(x), nullptr), &std::free);
  return code >= 0 && down && (down->keys[code / 8] >> (code % 8) & 1) != 0;
}

}  // namespace jxc
