#include "platform/linux/ClientWindows.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace velq
{

namespace
{

// In 32-bit units; as many windows as nobody has.
constexpr uint32_t longestList = 65536;

template <typename Reply> struct FreeReply {
    void operator()(Reply *reply) const noexcept { std::free(reply); }
};
template <typename Reply> using Owned = std::unique_ptr<Reply, FreeReply<Reply>>;

xcb_window_t rootOf(xcb_connection_t *connection, int screen)
{
    if (xcb_connection_has_error(connection) != 0)
        return XCB_NONE;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screen > 0 && screens.rem > 1; --screen)
        xcb_screen_next(&screens);
    return screens.data->root;
}

} // namespace

void ClientWindows::Disconnect::operator()(xcb_connection_t *connection) const noexcept
{
    xcb_disconnect(connection);
}

ClientWindows::ClientWindows()
    : m_connection(xcb_connect(nullptr, &m_screen))
    , m_root(rootOf(m_connection.get(), m_screen))
{
}

bool ClientWindows::activateWindowOf(qint64 pid) const
{
    if (m_root == XCB_NONE)
        return false;
    const xcb_atom_t pidAtom = atom("_NET_WM_PID");
    const auto windows = numbers(m_root, atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW);
    const auto found = std::ranges::find_if(windows, [&](xcb_window_t window) {
        const auto pids = numbers(window, pidAtom, XCB_ATOM_CARDINAL);
        return !pids.empty() && pids.front() == pid;
    });
    if (found == windows.end())
        return false;
    activate(*found);
    return true;
}

xcb_atom_t ClientWindows::atom(const char *name) const
{
    const auto cookie =
        xcb_intern_atom(m_connection.get(), 0, static_cast<uint16_t>(std::strlen(name)), name);
    const Owned<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(m_connection.get(), cookie, nullptr));
    return reply == nullptr ? xcb_atom_t(XCB_ATOM_NONE) : reply->atom;
}

std::vector<uint32_t> ClientWindows::numbers(xcb_window_t window, xcb_atom_t property,
                                             xcb_atom_t type) const
{
    const auto cookie =
        xcb_get_property(m_connection.get(), 0, window, property, type, 0, longestList);
    const Owned<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection.get(), cookie, nullptr));
    if (reply == nullptr || reply->format != 32)
        return {};
    const auto *first = static_cast<const uint32_t *>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

void ClientWindows::activate(xcb_window_t window) const
{
    // As a pager: the user has just asked for it.
    constexpr uint32_t pager = 2;
    xcb_client_message_event_t event = {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom("_NET_ACTIVE_WINDOW");
    event.data.data32[0] = pager;
    xcb_send_event(m_connection.get(), 0, m_root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
    xcb_flush(m_connection.get());
}

} // namespace velq
