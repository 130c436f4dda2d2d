#pragma once

#include <QtGlobal>

#include <cstdint>
#include <memory>
#include <vector>
#include <xcb/xcb.h>

namespace velq
{

/// The windows that the X server's window manager knows, as the Extended Window Manager Hints have
/// it. A connection of its own, open as long as the object lives; without a server there are no
/// windows.
class ClientWindows
{
public:
    ClientWindows();

    /// Asks the window manager to show a window of that process in front. False when it has none.
    bool activateWindowOf(qint64 pid) const;

private:
    struct Disconnect {
        void operator()(xcb_connection_t *connection) const noexcept;
    };

    xcb_atom_t atom(const char *name) const;
    std::vector<uint32_t> numbers(xcb_window_t window, xcb_atom_t property, xcb_atom_t type) const;
    void activate(xcb_window_t window) const;

    int m_screen = 0;
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    xcb_window_t m_root = XCB_NONE;
};

} // namespace velq
