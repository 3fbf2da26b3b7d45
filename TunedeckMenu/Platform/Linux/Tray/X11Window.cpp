#include "TunedeckMenu/Platform/Linux/Tray/X11Window.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace tunedeck {
namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};
template<class T>
using Reply = std::unique_ptr<T, Free>;

xcb_connection_t* connection() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

} // namespace

bool isShownBy(quint32 window, quint32 tray) {
    auto* x = connection();
    if (!x || window == 0 || tray == 0) {
        return false;
    }
    const Reply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, window), nullptr));
    if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE) {
        return false;
    }
    // The icons may be in another window of the tray, whose id differs only in the bits below the client's id.
    const auto client = tray & ~xcb_get_setup(x)->resource_id_mask;
    for (auto at = window;;) {
        const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(x, xcb_query_tree(x, at), nullptr));
        if (!tree || tree->parent == tree->root || tree->parent == XCB_WINDOW_NONE) {
            return false;
        }
        at = tree->parent;
        if ((at & ~xcb_get_setup(x)->resource_id_mask) == client) {
            return true;
        }
    }
}

std::optional<bool> wantsLightSymbols(quint32 tray) {
    auto* x = connection();
    if (!x || tray == 0) {
        return std::nullopt;
    }
    constexpr std::string_view name = "_NET_SYSTEM_TRAY_COLORS";
    const Reply<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(x, xcb_intern_atom(x, 1, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE) {
        return std::nullopt;
    }
    const Reply<xcb_get_property_reply_t> colours(
        xcb_get_property_reply(x, xcb_get_property(x, 0, tray, atom->atom, XCB_ATOM_CARDINAL, 0, 3), nullptr));
    if (!colours || colours->format != 32 || xcb_get_property_value_length(colours.get()) < 12) {
        return std::nullopt;
    }
    // Red, green and blue of the foreground, 16 bits each.
    const auto* rgb = static_cast<const std::uint32_t*>(xcb_get_property_value(colours.get()));
    return 0.2126 * rgb[0] + 0.7152 * rgb[1] + 0.0722 * rgb[2] > 0x7fff;
}

bool hasX11Tray() {
    int screen = 0;
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> owner(xcb_connect(nullptr, &screen),
                                                                             &xcb_disconnect);
    auto* x = owner.get();
    if (xcb_connection_has_error(x) != 0) {
        return false;
    }
    const auto name = "_NET_SYSTEM_TRAY_S" + std::to_string(screen);
    const Reply<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(x, xcb_intern_atom(x, 1, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE) {
        return false;
    }
    const Reply<xcb_get_selection_owner_reply_t> tray(
        xcb_get_selection_owner_reply(x, xcb_get_selection_owner(x, atom->atom), nullptr));
    return tray && tray->owner != XCB_WINDOW_NONE;
}

} // namespace tunedeck
