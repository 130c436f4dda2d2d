#include "monitor/tray/StatusNotifierItemAdaptor.h"

#include "monitor/tray/DBusMenu.h"
#include "monitor/tray/TrayPresence.h"

#include <QDBusMetaType>
#include <QGuiApplication>

namespace velq
{

StatusNotifierItemAdaptor::StatusNotifierItemAdaptor(TrayPresence *presence)
    : QDBusAbstractAdaptor(presence)
    , m_presence(presence)
{
    qDBusRegisterMetaType<velq::IconPixmap>();
    qDBusRegisterMetaType<QList<velq::IconPixmap>>();
    qDBusRegisterMetaType<velq::ToolTip>();
}

void StatusNotifierItemAdaptor::setIcon(const QList<velq::IconPixmap> &icon)
{
    m_icon = icon;
    Q_EMIT NewIcon();
}

void StatusNotifierItemAdaptor::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    Q_EMIT NewTitle();
    Q_EMIT NewToolTip();
}

QString StatusNotifierItemAdaptor::category() const
{
    return QStringLiteral("SystemServices");
}

// Hosts remember by it where the user put the icon, so it never changes.
QString StatusNotifierItemAdaptor::id() const
{
    return QStringLiteral("com.zelmor.Monitor");
}

QString StatusNotifierItemAdaptor::title() const
{
    const QString program = QGuiApplication::applicationDisplayName();
    return m_text.isEmpty() ? program : program + QStringLiteral(": ") + m_text;
}

QString StatusNotifierItemAdaptor::status() const
{
    return QStringLiteral("Active");
}

QDBusObjectPath StatusNotifierItemAdaptor::menu() const
{
    return QDBusObjectPath(DBusMenu::path);
}

void StatusNotifierItemAdaptor::Activate(int, int)
{
    Q_EMIT m_presence->clicked();
}

void StatusNotifierItemAdaptor::ContextMenu(int, int)
{
    Q_EMIT m_presence->secondaryClicked();
}

void StatusNotifierItemAdaptor::SecondaryActivate(int, int)
{
}

void StatusNotifierItemAdaptor::Scroll(int, const QString &)
{
}

} // namespace velq
