#include "cli/Ignore.h"

#include "cli/Items.h"
#include "cli/Json.h"
#include "cli/Misuse.h"
#include "common/Text.h"
#include "platform/UserDefaults.h"

#include <QJsonObject>

#include <algorithm>
#include <stdexcept>

namespace velq::cli
{

namespace
{

std::shared_ptr<GerenalData> itemOf(const QString &key)
{
    const auto items = allItems();
    const auto item = std::ranges::find(items, key, &GerenalData::ignoreKey);
    if (item == items.end())
        throw Misuse(QStringLiteral("there is no issue '%1'; velq ignore --help names those that "
                                    "there are")
                         .arg(key));
    if ((*item)->noShowIgnore())
        throw Misuse(
            QStringLiteral("'%1' (%2) may not be ignored").arg(key, (*item)->title().trimmed()));
    return *item;
}

} // namespace

const Operand ignoreKey{"KEY", "the ignoreKey of the issue", ignorableKeys};

Report ignore(const Arguments &arguments, Interruption & /*ends it*/)
{
    const auto item = itemOf(arguments.operands.first());
    item->resetIgnore();
    if (!UserDefaults::standardUserDefaults().synchronize())
        throw std::runtime_error("the choice cannot be stored");
    const QString text = item->ignore() ? QStringLiteral("%1 (%2) is ignored from now on.\n")
                                        : QStringLiteral("%1 (%2) is not ignored any more.\n");
    return {text.arg(item->ignoreKey(), onOneLine(item->title()).trimmed()),
            QJsonDocument(QJsonObject{{QStringLiteral("ignoreKey"), item->ignoreKey()},
                                      {QStringLiteral("ignore"), item->ignore()}})};
}

} // namespace velq::cli
