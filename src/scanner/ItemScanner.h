#pragma once

#include "scanner/NetData.h"
#include "scanner/Scanner.h"

#include <QList>

#include <atomic>
#include <memory>

namespace velq
{

/// A scanner with one item for each kind of problem that it knows: what every such scanner keeps.
/// Any thread may stop it; all else belongs to the thread that scans or speeds up, and to the host
/// when none does.
class ItemScanner : public Scanner
{
public:
    using Array = QList<std::shared_ptr<NetData>>;

    /// Both are raised for good: who wants to run again after a stop lowers the flag.
    void stopScan() override { m_stopScanFlag = true; }
    void stopSpeedup() override { m_stopFixFlag = true; }
    bool stopScanFlag() const { return m_stopScanFlag; }
    void setStopScanFlag(bool stop) { m_stopScanFlag = stop; }
    bool stopFixFlag() const { return m_stopFixFlag; }
    void setStopFixFlag(bool stop) { m_stopFixFlag = stop; }

    /// The sum over the items.
    qint64 issueCount() const override;
    Data data() const override;

    /// The same items as data() gives. Made with the scanner, written anew by each scan.
    const Array &array() const { return m_array; }
    /// The same kinds in the same order, none of them null. A kind that is left out goes without
    /// its results.
    void setArray(const Array &array) { m_array = array; }

    /// The bits of the problems that the last scan found.
    qint64 errorStatus() const { return m_errorStatus; }
    void setErrorStatus(qint64 bits) { m_errorStatus = bits; }

protected:
    explicit ItemScanner(Array items);

    /// Forgets what holds for one scan only: what was ignored in it, and its bits.
    void forgetLastScan();
    /// Whether the person has chosen to ignore the item for good; no for one that is left out.
    bool isIgnored(qsizetype item) const;
    /// Makes the line the item's whole result.
    void setResult(qsizetype item, const NetStatus &line) const;

private:
    Array m_array;
    qint64 m_errorStatus = 0;
    std::atomic<bool> m_stopScanFlag = false;
    std::atomic<bool> m_stopFixFlag = false;
};

} // namespace velq
