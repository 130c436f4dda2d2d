#pragma once

#include "monitor/MenuItem.h"

#include <QList>
#include <QPoint>

namespace velq
{

/// A menu as its entries; how it is shown is the status item's affair. Owns its entries. Main
/// thread.
class Menu : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    MenuItem *addItem(const QString &title, const QString &keyEquivalent = QString());
    void addSeparator();

    QList<MenuItem *> items() const { return m_items; }

    /// Asks whoever shows the menu to open it with its corner at `location`, in co-ordinates of
    /// `view` (null: of the screen), with `item` (null: none) at that place.
    void popUpMenuPositioningItem(MenuItem *item, QPoint location, QObject *view);

Q_SIGNALS:
    void itemChanged(MenuItem *item);
    void popUpRequested(QPoint location);

private:
    QList<MenuItem *> m_items;
};

} // namespace velq
