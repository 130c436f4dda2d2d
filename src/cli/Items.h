#pragma once

#include "scanner/GerenalData.h"

#include <QList>
#include <QStringList>

#include <memory>

namespace velq::cli
{

/// The issue items of all scanners, as they are before any scan of this process.
QList<std::shared_ptr<GerenalData>> allItems();

/// The keys of those that a person may have ignored.
QStringList ignorableKeys();

} // namespace velq::cli
