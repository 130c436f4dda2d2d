#pragma once

#include "scanner/GerenalData.h"

#include <QList>
#include <QtGlobal>

#include <memory>
#include <optional>

namespace velq
{

/// What the three scanners have in common: a check of some concern that its host starts, reads and
/// has repaired. Every operation is synchronous and blocks its caller, who stays off the interface
/// thread; the two stops may come from any thread and only raise flags that the running operation
/// looks at between its steps.
///
/// The host reads what a scanner hands out after the scan, never during it.
class Scanner
{
public:
    /// The issue items; nothing when a scanner has none to show at all.
    using Data = std::optional<QList<std::shared_ptr<GerenalData>>>;

    Scanner() = default;
    Scanner(const Scanner &) = delete;
    Scanner &operator=(const Scanner &) = delete;
    virtual ~Scanner() = default;

    virtual void scan() { }
    virtual void stopScan() { }
    /// Repairs what the last scan found.
    virtual void speedup() { }
    virtual void stopSpeedup() { }

    virtual qint64 issueCount() const { return m_issue; }
    virtual Data data() const { return std::nullopt; }
    /// Whether a person has to do something by hand.
    virtual bool needManully() const { return false; }

    /// Set by the host to take the scanner out of use; no scanner looks at it.
    virtual bool disable() const { return m_disable; }
    virtual void setDisable(bool disable) { m_disable = disable; }

protected:
    qint64 m_issue = 0;

private:
    bool m_disable = false;
};

} // namespace velq
