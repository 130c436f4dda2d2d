#include "monitor/tray/TrayStatusBar.h"

#include "monitor/tray/TrayItem.h"

namespace velq
{

std::shared_ptr<StatusItem> TrayStatusBar::statusItemWithLength(double)
{
    auto item = std::make_shared<StatusItem>();
    new TrayItem(item.get());
    return item;
}

} // namespace velq
