#pragma once

#include <QtGlobal>

namespace velq
{

/// Told of each problem that the application acceleration finds, on the scanning thread, by its
/// bit. Scanners hold their delegates without owning them; what a delegate does not override it
/// does not answer.
class AppNetworkAppdelegate
{
public:
    AppNetworkAppdelegate() = default;
    AppNetworkAppdelegate(const AppNetworkAppdelegate &) = delete;
    AppNetworkAppdelegate &operator=(const AppNetworkAppdelegate &) = delete;
    virtual ~AppNetworkAppdelegate() = default;

    virtual void appScannerStatus(qint64 /*status*/) { }
};

} // namespace velq
