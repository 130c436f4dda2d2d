#pragma once

#include "monitor/StatusItem.h"

namespace velq
{

class AppDelegate;

/// The monitor's views and menu, laid out: the state in words, the repair, opening, quitting. Owns
/// them; must outlive the delegate whose outlets it fills. Main thread.
class MainInterface
{
public:
    MainInterface();

    /// Fills the delegate's outlets and binds the entries to its actions.
    void connectOutlets(AppDelegate &delegate);

    Menu &menu() { return m_menu; }

private:
    StatusItemView m_view;
    Menu m_menu;
    MenuItem *m_state = nullptr;
    MenuItem *m_fix = nullptr;
    MenuItem *m_open = nullptr;
    MenuItem *m_quit = nullptr;
};

} // namespace velq
