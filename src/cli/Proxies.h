#pragma once

#include "cli/Report.h"

#include <QJsonArray>

namespace velq::cli
{

/// The proxies in use by the service that carries the traffic; a program gets each record by its
/// properties' names. Sends no packet.
Report proxies();

/// Such records for people, whose texts may have been changed since: a table, or a sentence where
/// there are none. Whole lines.
QString proxiesText(const QJsonArray &records);

} // namespace velq::cli
