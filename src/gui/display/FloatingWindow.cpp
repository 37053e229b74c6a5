#include "gui/display/FloatingWindow.h"

#include <QGuiApplication>
#include <QWidget>

#ifdef VERSEWICK_HAVE_XCB
#include <QtGui/qguiapplication_platform.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#endif

namespace FloatingWindow {

void apply(QWidget* window, bool acceptsFocus)
{
    if (!window)
        return;
    Qt::WindowFlags flags = Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::Tool;
    if (!acceptsFocus)
        flags |= Qt::WindowDoesNotAcceptFocus;
    window->setWindowFlags(flags);
    window->setAttribute(Qt::WA_ShowWithoutActivating);
    window->setAttribute(Qt::WA_TranslucentBackground);
}

#ifdef VERSEWICK_HAVE_XCB
namespace {
xcb_atom_t atom(xcb_connection_t* connection, const char* name)
{
    const auto cookie = xcb_intern_atom(connection, 0, std::uint16_t(std::strlen(name)), name);
    xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(connection, cookie, nullptr);
    const xcb_atom_t result = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    std::free(reply);
    return result;
}
} // namespace

void showOnAllDesktops(QWidget* window)
{
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!window || !x11 || !x11->connection())
        return;
    xcb_connection_t* connection = x11->connection();
    const auto id = xcb_window_t(window->winId());
    const xcb_atom_t desktop = atom(connection, "_NET_WM_DESKTOP");
    if (desktop == XCB_ATOM_NONE)
        return;
    const std::uint32_t all = 0xFFFFFFFF;
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, id, desktop, XCB_ATOM_CARDINAL, 32, 1,
                        &all);
    // A window already mapped must ask the window manager through the root window.
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    if (screen) {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = id;
        event.type = desktop;
        event.data.data32[0] = all;
        event.data.data32[1] = 1; // from an application
        xcb_send_event(connection, 0, screen->root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&event));
    }
    xcb_flush(connection);
}
#else
void showOnAllDesktops(QWidget*) {}
#endif

} // namespace FloatingWindow
