#pragma once

#include <QHash>
#include <QObject>
#include <QPoint>
#include <QPointer>

#include <memory>

class QAction;
class QMenu;

namespace velq
{

class Menu;
class MenuItem;

/// Shows a menu as a window when the menu asks to be popped up, and keeps it like the menu while it
/// is open. The window is made when first needed. Main thread, with a QApplication.
class PopUpMenu : public QObject
{
    Q_OBJECT

public:
    PopUpMenu();
    ~PopUpMenu() override;

    /// Not owned; null for none.
    void setMenu(Menu *menu);

private:
    void popUp(QPoint location);
    void makeWindow();
    void addItem(MenuItem *item);
    void update(MenuItem *item);

    QPointer<Menu> m_menu;
    std::unique_ptr<QMenu> m_window;
    QHash<MenuItem *, QAction *> m_actions;
};

} // namespace velq
