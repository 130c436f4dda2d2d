#pragma once

#include "monitor/tray/SessionBusConnection.h"
#include "monitor/tray/TrayPresence.h"

namespace velq
{

class DBusMenu;
class StatusNotifierItemAdaptor;

/// A tray icon on the session bus, drawn by the tray's host, with its menu. It has a connection of
/// its own: closing it takes the name, the objects and the registration away in one.
///
/// Our own and not QSystemTrayIcon, because that one decides once in a process whether it speaks
/// this protocol and could not follow a tray that comes or goes later. Nothing waits for the bus or
/// the tray once the connection stands. Main thread.
///
/// Protocol: freedesktop.org, StatusNotifierItem.
class StatusNotifierItem : public TrayPresence
{
    Q_OBJECT

public:
    StatusNotifierItem();

    void setImages(const QList<QImage> &images) override;
    void setText(const QString &text) override;
    void setMenu(Menu *menu) override;
    void show() override;

    /// "org.kde.StatusNotifierItem-PID-NUMBER", another number for each item of the process.
    QString serviceName() const { return m_connection.name(); }

private:
    void requestName();
    void registerWithWatcher();

    SessionBusConnection m_connection;
    StatusNotifierItemAdaptor *m_adaptor;
    DBusMenu *m_menu;
    QList<QImage> m_images;
};

} // namespace velq
