#include "platform/Display.h"

#include <QDir>
#include <QLibraryInfo>

#include <memory>
#include <xcb/xcb.h>

namespace velq
{

namespace
{

struct Disconnect {
    void operator()(xcb_connection_t *connection) const noexcept { xcb_disconnect(connection); }
};

bool xServerAnswers()
{
    if (!qEnvironmentVariableIsSet("DISPLAY"))
        return false;
    const std::unique_ptr<xcb_connection_t, Disconnect> connection(xcb_connect(nullptr, nullptr));
    return xcb_connection_has_error(connection.get()) == 0;
}

bool waylandIsSpoken()
{
    if (!qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
        return false;
    const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath)
                       + QStringLiteral("/platforms"));
    return !plugins.entryList({QStringLiteral("libqwayland*")}).isEmpty();
}

} // namespace

bool displayIsAvailable()
{
    // Somebody who names Qt's platform, "offscreen" say, knows what is there.
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || xServerAnswers() || waylandIsSpoken();
}

} // namespace velq
