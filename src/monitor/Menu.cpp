#include "monitor/Menu.h"

namespace velq
{

MenuItem *Menu::addItem(const QString &title, const QString &keyEquivalent)
{
    auto *item = new MenuItem(title, keyEquivalent, this);
    connect(item, &MenuItem::changed, this, [this, item] { Q_EMIT itemChanged(item); });
    m_items.append(item);
    return item;
}

void Menu::addSeparator()
{
    m_items.append(MenuItem::separatorItem(this));
}

void Menu::popUpMenuPositioningItem(MenuItem *, QPoint location, QObject *)
{
    Q_EMIT popUpRequested(location);
}

} // namespace velq
