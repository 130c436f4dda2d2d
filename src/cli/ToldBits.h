#pragma once

#include "scanner/AppNetworkAppdelegate.h"
#include "scanner/NetworkErrorDelegate.h"
#include "scanner/OptimizeScannerDelegate.h"

#include <QList>

namespace velq::cli
{

/// The delegate of any scanner: keeps the bits that it is told, in order. For the scanning thread.
class ToldBits : public NetworkErrorDelegate,
                 public OptimizeScannerDelegate,
                 public AppNetworkAppdelegate
{
public:
    void networkErrorStatus(qint64 status) override { m_bits.append(status); }
    void optimizeScannerStatus(qint64 status) override { m_bits.append(status); }
    void appScannerStatus(qint64 status) override { m_bits.append(status); }

    const QList<qint64> &bits() const { return m_bits; }

private:
    QList<qint64> m_bits;
};

} // namespace velq::cli
