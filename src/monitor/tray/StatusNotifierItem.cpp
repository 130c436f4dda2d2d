#include "monitor/tray/StatusNotifierItem.h"

#include "monitor/tray/DBusMenu.h"
#include "monitor/tray/StatusNotifierItemAdaptor.h"

#include <QCoreApplication>
#include <QDBusMessage>

namespace velq
{

namespace
{

constexpr QLatin1String itemPath("/StatusNotifierItem");
constexpr QLatin1String watcher("org.kde.StatusNotifierWatcher");
constexpr QLatin1String bus("org.freedesktop.DBus");
constexpr uint doNotQueue = 4;

QString nextServiceName()
{
    static int number = 0;
    return QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
        .arg(QCoreApplication::applicationPid())
        .arg(++number);
}

} // namespace

StatusNotifierItem::StatusNotifierItem()
    : m_connection(nextServiceName())
    , m_adaptor(new StatusNotifierItemAdaptor(this))
    , m_menu(new DBusMenu(this))
{
    m_adaptor->setIcon(IconPixmap::fromImages({}));
}

void StatusNotifierItem::setImages(const QList<QImage> &images)
{
    if (m_images == images)
        return;
    m_images = images;
    m_adaptor->setIcon(IconPixmap::fromImages(images));
}

void StatusNotifierItem::setText(const QString &text)
{
    m_adaptor->setText(text);
}

void StatusNotifierItem::setMenu(Menu *menu)
{
    m_menu->setMenu(menu);
}

void StatusNotifierItem::show()
{
    m_connection->registerObject(itemPath, this, QDBusConnection::ExportAdaptors);
    m_connection->registerObject(DBusMenu::path, m_menu, QDBusConnection::ExportAdaptors);
    requestName();
    registerWithWatcher();
}

// QDBusConnection::registerService would wait for the answer. The bus handles messages in order, so
// the name is there when the watcher hears of it.
void StatusNotifierItem::requestName()
{
    QDBusMessage call = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"),
                                                       bus, QStringLiteral("RequestName"));
    call.setArguments({serviceName(), doNotQueue});
    m_connection->send(call);
}

void StatusNotifierItem::registerWithWatcher()
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(watcher, QStringLiteral("/StatusNotifierWatcher"), watcher,
                                       QStringLiteral("RegisterStatusNotifierItem"));
    call.setArguments({serviceName()});
    m_connection->send(call);
}

} // namespace velq
