#pragma once

#include "monitor/StatusItem.h"
#include "monitor/console/ConsoleOutput.h"

#include <QTimer>

namespace velq
{

/// Prints one status item as a line whenever what it says changes. A child of the item. Main
/// thread.
class ConsoleStatusLine : public QObject
{
    Q_OBJECT

public:
    ConsoleStatusLine(StatusItem &item, ConsoleOutput &output);

private:
    void observeView();
    void observeMenu();
    void print();
    QString line() const;

    StatusItem &m_item;
    ConsoleOutput &m_output;
    QTimer m_soon;
    QString m_printed;
};

} // namespace velq
