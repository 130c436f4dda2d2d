#include "monitor/MainInterface.h"

#include "monitor/AppDelegate.h"

namespace velq
{

MainInterface::MainInterface()
{
    m_state = m_menu.addItem(AppDelegate::tr("Looking at the network…"));
    m_menu.addSeparator();
    m_fix = m_menu.addItem(AppDelegate::tr("Repair Connection"), QStringLiteral("r"));
    m_open = m_menu.addItem(AppDelegate::tr("Open Velq"), QStringLiteral("o"));
    m_menu.addSeparator();
    m_quit = m_menu.addItem(AppDelegate::tr("Quit"), QStringLiteral("q"));
}

void MainInterface::connectOutlets(AppDelegate &delegate)
{
    delegate.setImageView(&m_view);
    delegate.setIconImage(m_view.iconImage);
    delegate.setStatusImage(m_view.statusImage);
    delegate.setMenButton(m_view.menButton);
    delegate.setMainMenu(&m_menu);
    delegate.setStateMenuItem(m_state);
    delegate.setFixMenuItem(m_fix);
    m_open->setTarget(&delegate);
    m_open->setAction("openMainApp");
    m_quit->setTarget(&delegate);
    m_quit->setAction("onQuit");
}

} // namespace velq
