#include "monitor/console/ConsoleKeyboard.h"

#include <QTimer>

#include <algorithm>
#include <array>
#include <csignal>
#include <unistd.h>

namespace velq
{

namespace
{

using namespace std::chrono_literals;

bool isInForeground()
{
    return tcgetpgrp(STDIN_FILENO) == getpgrp();
}

} // namespace

ConsoleKeyboard::ConsoleKeyboard(Menu &menu, ConsoleOutput &output)
    : m_menu(menu)
    , m_output(output)
{
    if (isatty(STDIN_FILENO) == 0)
        return;
    // A read from the background must fail, not stop the program.
    (void)std::signal(SIGTTIN, SIG_IGN);
    m_notifier = std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &ConsoleKeyboard::onReadable);
}

void ConsoleKeyboard::onReadable()
{
    // In the background the input is the shell's, and stays readable until the shell takes it.
    if (!isInForeground()) {
        m_notifier->setEnabled(false);
        QTimer::singleShot(1s, this, [this] { m_notifier->setEnabled(true); });
        return;
    }
    std::array<char, 256> line{};
    const ssize_t length = read(STDIN_FILENO, line.data(), line.size());
    if (length > 0)
        take(QString::fromLocal8Bit(line.data(), length).trimmed());
    else
        m_notifier->setEnabled(false);
}

void ConsoleKeyboard::take(const QString &key)
{
    if (key.isEmpty())
        return;
    const auto items = m_menu.items();
    const auto chosen = std::ranges::find(items, key, &MenuItem::keyEquivalent);
    if (chosen == items.end())
        m_output.writeLine(tr("There is no entry “%1”.").arg(key));
    else if ((*chosen)->isEnabled())
        (*chosen)->choose();
    else
        m_output.writeLine(tr("“%1” is not available now.").arg((*chosen)->title()));
}

} // namespace velq
