#include "monitor/PopUpButton.h"

#include <QCursor>

namespace velq
{

void PopUpButton::setMenu(Menu *menu)
{
    if (m_menu == menu)
        return;
    m_menu = menu;
    Q_EMIT menuChanged();
}

void PopUpButton::mouseDown()
{
    popUpAtMouse();
}

void PopUpButton::rightMouseDown()
{
}

void PopUpButton::popUpAtMouse()
{
    if (m_menu != nullptr)
        m_menu->popUpMenuPositioningItem(nullptr, QCursor::pos(), nullptr);
}

} // namespace velq
