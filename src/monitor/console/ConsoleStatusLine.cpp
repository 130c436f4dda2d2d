#include "monitor/console/ConsoleStatusLine.h"

namespace velq
{

ConsoleStatusLine::ConsoleStatusLine(StatusItem &item, ConsoleOutput &output)
    : QObject(&item)
    , m_item(item)
    , m_output(output)
{
    // The text and the menu change one after the other: printed is what they say when both are
    // done.
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &ConsoleStatusLine::print);
    const auto soon = [this] {
        m_soon.start(0);
    };
    connect(&m_item, &StatusItem::textChanged, this, soon);
    connect(&m_item, &StatusItem::viewChanged, this, &ConsoleStatusLine::observeView);
    observeView();
}

void ConsoleStatusLine::observeView()
{
    if (m_item.view() == nullptr)
        return;
    connect(m_item.view()->menButton, &PopUpButton::menuChanged, this,
            &ConsoleStatusLine::observeMenu);
    observeMenu();
}

void ConsoleStatusLine::observeMenu()
{
    if (const Menu *menu = m_item.view()->menButton->menu())
        connect(menu, &Menu::itemChanged, this, [this] { m_soon.start(0); });
}

void ConsoleStatusLine::print()
{
    const QString now = line();
    if (now == m_printed)
        return;
    m_printed = now;
    m_output.writeLine(now);
}

QString ConsoleStatusLine::line() const
{
    QStringList available;
    const Menu *menu = m_item.view() == nullptr ? nullptr : m_item.view()->menButton->menu();
    for (const MenuItem *item : menu == nullptr ? QList<MenuItem *>() : menu->items()) {
        if (item->isEnabled())
            available.append(QStringLiteral("%1 (%2)").arg(item->title(), item->keyEquivalent()));
    }
    if (available.isEmpty())
        return m_item.text();
    return tr("%1. Available: %2.").arg(m_item.text(), available.join(QStringLiteral(", ")));
}

} // namespace velq
