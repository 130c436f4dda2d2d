#include "cli/Items.h"

#include "appaccel/AppNetworkScanner.h"
#include "diagnosis/NetworkScanner.h"
#include "optimize/OptimizeScanner.h"

namespace velq::cli
{

QList<std::shared_ptr<GerenalData>> allItems()
{
    QList<std::shared_ptr<GerenalData>> items;
    for (const Scanner *scanner :
         {static_cast<const Scanner *>(&NetworkScanner::shareScanner()),
          static_cast<const Scanner *>(&OptimizeScanner::shareScanner()),
          static_cast<const Scanner *>(&AppNetworkScanner::shareScanner())})
        items += scanner->data().value_or(QList<std::shared_ptr<GerenalData>>());
    return items;
}

QStringList ignorableKeys()
{
    QStringList keys;
    for (const auto &item : allItems())
        if (!item->noShowIgnore())
            keys.append(item->ignoreKey());
    return keys;
}

} // namespace velq::cli
