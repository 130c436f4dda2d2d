#pragma once

#include <memory>
#include <xcb/xcb.h>

namespace velq::testing
{

/// The application's window, called "Velq" and marked with its process's number. Without a display
/// there is none.
class Window
{
public:
    Window();

private:
    struct Disconnect {
        void operator()(xcb_connection_t *connection) const noexcept;
    };
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
};

} // namespace velq::testing
