#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace tunedeck {

struct XcbFree {
    void operator()(void* reply) const { std::free(reply); }
};
/// Owns a reply or an event of the X server.
template<class T>
using XcbReply = std::unique_ptr<T, XcbFree>;

struct XcbDisconnect {
    void operator()(xcb_connection_t* x) const { xcb_disconnect(x); }
};
/// Owns a connection to the X server.
using XcbConnection = std::unique_ptr<xcb_connection_t, XcbDisconnect>;

/// The atom with this name; XCB_ATOM_NONE on failure. Waits for the X server.
inline xcb_atom_t xcbAtom(xcb_connection_t* x, std::string_view name) {
    const auto request = xcb_intern_atom(x, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(x, request, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace tunedeck
