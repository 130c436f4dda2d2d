#pragma once

#include "monitor/tray/DBusMenuTypes.h"

#include <QDBusAbstractAdaptor>

namespace velq
{

class DBusMenu;

/// What a menu answers on the bus. Names and signatures are the protocol's. Main thread.
///
/// Protocol: com.canonical.dbusmenu, version 3.
class DBusMenuAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    explicit DBusMenuAdaptor(DBusMenu *menu);

    uint version() const { return 3; }
    QString status() const;
    QString textDirection() const;
    QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    /// Returns the revision.
    uint GetLayout(int parentId, int recursionDepth, const QStringList &propertyNames,
                   velq::DBusMenuLayout &layout);
    QList<velq::DBusMenuItem> GetGroupProperties(const QList<int> &ids,
                                                 const QStringList &propertyNames);
    QDBusVariant GetProperty(int id, const QString &name);
    void Event(int id, const QString &eventId, const QDBusVariant &data, uint timestamp);
    /// Returns the numbers that are unknown.
    QList<int> EventGroup(const QList<velq::DBusMenuEvent> &events);
    /// Whether the caller must read the layout again: never, changes are sent as they happen.
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors);

Q_SIGNALS:
    void ItemsPropertiesUpdated(const QList<velq::DBusMenuItem> &updated,
                                const QList<velq::DBusMenuItemKeys> &removed);
    void LayoutUpdated(uint revision, int parent);

private:
    QList<int> unknownAmong(const QList<int> &ids) const;

    DBusMenu *m_menu;
};

} // namespace velq
