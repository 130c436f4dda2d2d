#pragma once

#include <QtGlobal>

namespace velq
{

/// Told of each problem that the diagnosis finds, on the scanning thread, by its bit. Scanners hold
/// their delegates without owning them; what a delegate does not override it does not answer.
class NetworkErrorDelegate
{
public:
    NetworkErrorDelegate() = default;
    NetworkErrorDelegate(const NetworkErrorDelegate &) = delete;
    NetworkErrorDelegate &operator=(const NetworkErrorDelegate &) = delete;
    virtual ~NetworkErrorDelegate() = default;

    virtual void networkErrorStatus(qint64 /*status*/) { }
};

} // namespace velq
