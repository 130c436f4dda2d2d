#pragma once

#include "monitor/tray/DBusMenuTypes.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

namespace velq
{

class DBusMenuAdaptor;
class Menu;
class MenuItem;

/// A menu as a tray's host sees it over the bus, for the host to draw. Its root has the number 0,
/// its entries 1 and up in their order; a number that is none of these has no properties. Main
/// thread.
///
/// Protocol: com.canonical.dbusmenu, version 3.
class DBusMenu : public QObject
{
    Q_OBJECT

public:
    static constexpr QLatin1String path{"/MenuBar"};

    explicit DBusMenu(QObject *parent);

    /// Not owned; null for none, which is shown as a menu without entries.
    void setMenu(Menu *menu);

    bool knows(int id) const;
    /// Those of `names` that the entry has; empty `names` for all.
    QVariantMap properties(int id, const QStringList &names = {}) const;
    /// With its children when `depth` is not 0; there are no deeper ones.
    DBusMenuLayout layout(int id, int depth, const QStringList &names) const;
    QList<int> ids() const;
    uint revision() const { return m_revision; }

    /// Chooses the entry, after the caller has had the answer.
    void clicked(int id);

private:
    MenuItem *item(int id) const;
    qsizetype count() const;
    void sendChanges();

    QPointer<Menu> m_menu;
    DBusMenuAdaptor *m_adaptor;
    QTimer m_sendSoon;
    uint m_revision = 1;
    QList<QVariantMap> m_sent;
};

} // namespace velq
