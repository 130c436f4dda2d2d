#pragma once

#include <QList>
#include <QStringList>

namespace velq::cli
{

/// Rows of a table for people, a line each, the columns as wide on a terminal as their longest
/// text. A text that is absent or empty shows as "-".
QString columns(const QList<QStringList> &rows);

} // namespace velq::cli
