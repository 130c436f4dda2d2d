#pragma once

#include "monitor/Menu.h"
#include "monitor/console/ConsoleOutput.h"

#include <QSocketNotifier>

#include <memory>

namespace velq
{

/// Takes a menu's entries from the keyboard: the entry's key, then Enter. Only where standard input
/// is a terminal, and only while the program is in its foreground; else nothing is read. Main
/// thread.
class ConsoleKeyboard : public QObject
{
    Q_OBJECT

public:
    /// `menu` and `output` must outlive the keyboard.
    ConsoleKeyboard(Menu &menu, ConsoleOutput &output);

private:
    void onReadable();
    void take(const QString &key);

    Menu &m_menu;
    ConsoleOutput &m_output;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace velq
