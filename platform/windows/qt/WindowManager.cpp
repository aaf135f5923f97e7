#include "platform/windows/qt/WindowManager.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace {

struct Free {
    void operator()(void* pReply) const { std::free(pReply); }
};
template <class Reply>
using ReplyPtr = std::unique_ptr<Reply, Free>;

xcb_atom_t FindAtom(xcb_connection_t* pX, std::string_view strName) {
    const auto cookie =
        xcb_intern_atom(pX, 1, static_cast<std::uint16_t>(strName.size()), strName.data());
    const ReplyPtr<xcb_intern_atom_reply_t> pReply(xcb_intern_atom_reply(pX, cookie, nullptr));
    return pReply ? pReply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// The window that a window's property names; none when either is not there.
xcb_window_t ReadWindowProperty(xcb_connection_t* pX, xcb_window_t window, xcb_atom_t property) {
    const auto cookie = xcb_get_property(pX, 0, window, property, XCB_ATOM_WINDOW, 0, 1);
    const ReplyPtr<xcb_get_property_reply_t> pReply(xcb_get_property_reply(pX, cookie, nullptr));
    if (!pReply || xcb_get_property_value_length(pReply.get()) != sizeof(xcb_window_t))
        return XCB_WINDOW_NONE;
    return *static_cast<const xcb_window_t*>(xcb_get_property_value(pReply.get()));
}

/// A window manager leaves a window of its own in a property of the root, and its name for it in
/// the same property of that window: what a dead one has left on the root leads nowhere.
bool HasManager(xcb_connection_t* pX) {
    const xcb_atom_t check = FindAtom(pX, "_NET_SUPPORTING_WM_CHECK");
    if (check == XCB_ATOM_NONE) return false;
    for (auto roots = xcb_setup_roots_iterator(xcb_get_setup(pX)); roots.rem;
         xcb_screen_next(&roots)) {
        const xcb_window_t window = ReadWindowProperty(pX, roots.data->root, check);
        if (window != XCB_WINDOW_NONE && ReadWindowProperty(pX, window, check) == window)
            return true;
    }
    return false;
}

}  // namespace

bool HasWindowManager() {
    if (const auto* pX11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>())
        return pX11->connection() && HasManager(pX11->connection());
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}
