#include "monitor/console/ConsoleStatusBar.h"

#include "monitor/console/ConsoleStatusLine.h"

namespace velq
{

ConsoleStatusBar::ConsoleStatusBar(ConsoleOutput &output)
    : m_output(output)
{
}

std::shared_ptr<StatusItem> ConsoleStatusBar::statusItemWithLength(double)
{
    auto item = std::make_shared<StatusItem>();
    // The item owns its line: both go together.
    new ConsoleStatusLine(*item, m_output);
    return item;
}

} // namespace velq
