#include "monitor/tray/DBusMenuAdaptor.h"

#include "monitor/tray/DBusMenu.h"

#include <QGuiApplication>

namespace velq
{

DBusMenuAdaptor::DBusMenuAdaptor(DBusMenu *menu)
    : QDBusAbstractAdaptor(menu)
    , m_menu(menu)
{
    registerDBusMenuTypes();
}

QString DBusMenuAdaptor::status() const
{
    return QStringLiteral("normal");
}

QString DBusMenuAdaptor::textDirection() const
{
    return QGuiApplication::isRightToLeft() ? QStringLiteral("rtl") : QStringLiteral("ltr");
}

uint DBusMenuAdaptor::GetLayout(int parentId, int recursionDepth, const QStringList &propertyNames,
                                velq::DBusMenuLayout &layout)
{
    layout = m_menu->layout(parentId, recursionDepth, propertyNames);
    return m_menu->revision();
}

QList<velq::DBusMenuItem> DBusMenuAdaptor::GetGroupProperties(const QList<int> &ids,
                                                              const QStringList &propertyNames)
{
    QList<DBusMenuItem> items;
    for (const int id : ids.isEmpty() ? m_menu->ids() : ids)
        if (m_menu->knows(id))
            items.append({id, m_menu->properties(id, propertyNames)});
    return items;
}

// The bus has no word for an absent value; a property that there is not is empty text.
QDBusVariant DBusMenuAdaptor::GetProperty(int id, const QString &name)
{
    return QDBusVariant(m_menu->properties(id).value(name, QString()));
}

void DBusMenuAdaptor::Event(int id, const QString &eventId, const QDBusVariant &, uint)
{
    if (eventId == QLatin1String("clicked"))
        m_menu->clicked(id);
}

QList<int> DBusMenuAdaptor::EventGroup(const QList<velq::DBusMenuEvent> &events)
{
    QList<int> ids;
    for (const DBusMenuEvent &event : events) {
        Event(event.id, event.eventId, event.data, event.timestamp);
        ids.append(event.id);
    }
    return unknownAmong(ids);
}

bool DBusMenuAdaptor::AboutToShow(int)
{
    return false;
}

QList<int> DBusMenuAdaptor::AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors)
{
    idErrors = unknownAmong(ids);
    return {};
}

QList<int> DBusMenuAdaptor::unknownAmong(const QList<int> &ids) const
{
    QList<int> unknown = ids;
    unknown.removeIf([this](int id) { return m_menu->knows(id); });
    return unknown;
}

} // namespace velq
