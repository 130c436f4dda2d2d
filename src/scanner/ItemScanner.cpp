#include "scanner/ItemScanner.h"

#include <utility>

namespace velq
{

ItemScanner::ItemScanner(Array items)
    : m_array(std::move(items))
{
}

qint64 ItemScanner::issueCount() const
{
    qint64 count = 0;
    for (const auto &item : m_array)
        count += item->issue();
    return count;
}

Scanner::Data ItemScanner::data() const
{
    return QList<std::shared_ptr<GerenalData>>(m_array.cbegin(), m_array.cend());
}

void ItemScanner::forgetLastScan()
{
    for (const auto &item : std::as_const(m_array))
        item->setHasIgnore(false);
    m_errorStatus = 0;
}

bool ItemScanner::isIgnored(qsizetype item) const
{
    const auto record = m_array.value(item);
    return record != nullptr && record->ignore();
}

void ItemScanner::setResult(qsizetype item, const NetStatus &line) const
{
    if (const auto record = m_array.value(item))
        record->setResult(line);
}

} // namespace velq
