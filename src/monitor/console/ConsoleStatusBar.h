#pragma once

#include "monitor/StatusItem.h"
#include "monitor/console/ConsoleOutput.h"

namespace velq
{

/// A status bar for a terminal, a pipe or a log: a status item is a line, printed when something in
/// it changes: its text, and which entries of its menu can be chosen. Main thread.
class ConsoleStatusBar : public StatusBar
{
public:
    /// `output` must outlive the status bar and its items.
    explicit ConsoleStatusBar(ConsoleOutput &output);

    std::shared_ptr<StatusItem> statusItemWithLength(double length) override;

private:
    ConsoleOutput &m_output;
};

} // namespace velq
