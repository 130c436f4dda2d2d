#include "support/application/Window.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <unistd.h>

namespace velq::testing
{

namespace
{

xcb_atom_t atom(xcb_connection_t *connection, std::string_view name)
{
    const auto cookie =
        xcb_intern_atom(connection, 0, static_cast<uint16_t>(name.size()), name.data());
    xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(connection, cookie, nullptr);
    const xcb_atom_t result = reply == nullptr ? xcb_atom_t(XCB_ATOM_NONE) : reply->atom;
    std::free(reply);
    return result;
}

} // namespace

void Window::Disconnect::operator()(xcb_connection_t *connection) const noexcept
{
    xcb_disconnect(connection);
}

Window::Window()
    : m_connection(xcb_connect(nullptr, nullptr))
{
    xcb_connection_t *connection = m_connection.get();
    if (xcb_connection_has_error(connection) != 0)
        return;
    const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    const auto pid = static_cast<uint32_t>(getpid());
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom(connection, "_NET_WM_PID"),
                        XCB_ATOM_CARDINAL, 32, 1, &pid);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME,
                        XCB_ATOM_STRING, 8, 4, "Velq");
    xcb_map_window(connection, window);
    xcb_flush(connection);
}

} // namespace velq::testing
