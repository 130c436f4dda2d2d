#pragma once

#include "monitor/Menu.h"

namespace velq
{

/// The part of the status item that takes clicks and carries the menu. Main thread.
class PopUpButton : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Not owned.
    Menu *menu() const { return m_menu; }
    void setMenu(Menu *menu);

    /// A click with the main button: opens the menu.
    virtual void mouseDown();
    /// A click with the other button: nothing, for a plain button.
    virtual void rightMouseDown();

Q_SIGNALS:
    void menuChanged();

protected:
    /// Opens the menu where the pointer is, on the screen.
    void popUpAtMouse();

private:
    QPointer<Menu> m_menu;
};

} // namespace velq
