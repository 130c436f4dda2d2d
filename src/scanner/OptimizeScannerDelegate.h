#pragma once

#include <QtGlobal>

namespace velq
{

/// Told of each problem that the optimization finds, on the scanning thread, by its bit. Scanners
/// hold their delegates without owning them; what a delegate does not override it does not answer.
class OptimizeScannerDelegate
{
public:
    OptimizeScannerDelegate() = default;
    OptimizeScannerDelegate(const OptimizeScannerDelegate &) = delete;
    OptimizeScannerDelegate &operator=(const OptimizeScannerDelegate &) = delete;
    virtual ~OptimizeScannerDelegate() = default;

    virtual void optimizeScannerStatus(qint64 /*status*/) { }
};

} // namespace velq
