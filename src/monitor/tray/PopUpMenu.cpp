#include "monitor/tray/PopUpMenu.h"

#include "monitor/Menu.h"

#include <QAction>
#include <QMenu>

namespace velq
{

PopUpMenu::PopUpMenu() = default;

PopUpMenu::~PopUpMenu() = default;

void PopUpMenu::setMenu(Menu *menu)
{
    if (m_menu == menu)
        return;
    if (!m_menu.isNull())
        m_menu->disconnect(this);
    m_actions.clear();
    m_window.reset();
    m_menu = menu;
    if (m_menu.isNull())
        return;
    connect(m_menu, &Menu::popUpRequested, this, &PopUpMenu::popUp);
    connect(m_menu, &Menu::itemChanged, this, &PopUpMenu::update);
}

// A second click on the icon puts an open menu away, where the panel lets that click through.
void PopUpMenu::popUp(QPoint location)
{
    if (m_window == nullptr)
        makeWindow();
    if (m_window->isVisible())
        m_window->close();
    else
        m_window->popup(location);
}

void PopUpMenu::makeWindow()
{
    m_window = std::make_unique<QMenu>();
    for (MenuItem *item : m_menu->items())
        addItem(item);
}

void PopUpMenu::addItem(MenuItem *item)
{
    if (item->isSeparatorItem()) {
        m_window->addSeparator();
        return;
    }
    QAction *action = m_window->addAction(QString());
    connect(action, &QAction::triggered, item, &MenuItem::choose);
    m_actions.insert(item, action);
    update(item);
}

void PopUpMenu::update(MenuItem *item)
{
    QAction *action = m_actions.value(item);
    if (action == nullptr)
        return;
    // An ampersand alone would underline the letter behind it.
    action->setText(item->title().replace(QLatin1Char('&'), QLatin1String("&&")));
    action->setEnabled(item->isEnabled());
}

} // namespace velq
