#pragma once

#include "cli/Report.h"
#include "scanner/NetworkService.h"

#include <QJsonArray>
#include <QList>

namespace velq::cli
{

/// The network services, read anew into those that the shared scanner knows.
QList<NetworkService> serviceInventory();

/// The inventory of the network services; a program gets each record by its properties' names.
Report services();

/// Such records for people, whose texts may have been changed since: a table, or a sentence where
/// there are none. Whole lines.
QString servicesText(const QJsonArray &records);

} // namespace velq::cli
