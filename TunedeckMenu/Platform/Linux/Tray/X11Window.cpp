#include "TunedeckMenu/Platform/Linux/Tray/X11Window.h"

#include "TunedeckCore/Support/Linux/Xcb.h"

#include <QGuiApplication>

#include <string>

namespace tunedeck {
namespace {

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
    const XcbReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, window), nullptr));
    if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE) {
        return false;
    }
    // The icons may be in another window of the tray, whose id differs only in the bits below the client's id.
    const auto client = tray & ~xcb_get_setup(x)->resource_id_mask;
    for (auto at = window;;) {
        const XcbReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(x, xcb_query_tree(x, at), nullptr));
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
    const auto property = xcbAtom(x, "_NET_SYSTEM_TRAY_COLORS");
    const XcbReply<xcb_get_property_reply_t> colours(
        xcb_get_property_reply(x, xcb_get_property(x, 0, tray, property, XCB_ATOM_CARDINAL, 0, 3), nullptr));
    if (!colours || colours->format != 32 || xcb_get_property_value_length(colours.get()) < 12) {
        return std::nullopt;
    }
    // Red, green and blue of the foreground, 16 bits each.
    const auto* rgb = static_cast<const std::uint32_t*>(xcb_get_property_value(colours.get()));
    return 0.2126 * rgb[0] + 0.7152 * rgb[1] + 0.0722 * rgb[2] > 0x7fff;
}

bool hasX11Tray() {
    int screen = 0;
    const XcbConnection owner(xcb_connect(nullptr, &screen));
    auto* x = owner.get();
    if (xcb_connection_has_error(x) != 0) {
        return false;
    }
    const auto selection = xcbAtom(x, "_NET_SYSTEM_TRAY_S" + std::to_string(screen));
    const XcbReply<xcb_get_selection_owner_reply_t> tray(
        xcb_get_selection_owner_reply(x, xcb_get_selection_owner(x, selection), nullptr));
    return tray && tray->owner != XCB_WINDOW_NONE;
}

} // namespace tunedeck
