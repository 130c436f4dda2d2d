#pragma once

#include "cli/Arguments.h"
#include "cli/Findings.h"
#include "cli/Progress.h"
#include "cli/Report.h"
#include "cli/ToldBits.h"

#include <QScopeGuard>

#include <functional>

namespace velq::cli
{

class Interruption;

/// With it a command repairs what its scan has found.
inline constexpr Option repairOption{"--repair", "repair what is found"};
/// The same, where nothing is broken.
inline constexpr Option speedupOption{"--speedup", "speed up what is found"};

/// A scan by one of the scanners, and its repair, as a command. Command's thread.
class Examination
{
public:
    /// What is said when the work begins, without a full stop.
    struct Words {
        const char *scanning;
        const char *repairing;
        const char *advice; ///< where there is something to repair and it was not asked for
        qint64 repairable;  ///< of the problems' bits
        /// Whether the scanner's repair ends with a scan of its own. What does not is scanned again
        /// here, as only a scan tells what came of it.
        bool endsWithScan = true;
    };

    /// `told` is the scanner's delegate; all must outlive this.
    Examination(Scanner &scanner, std::function<qint64()> errorStatus, const ToldBits &told,
                Progress &progress);

    /// Found when problems are there in the end. An interruption stops the scanner.
    Report carriedOut(const Words &words, bool repairs, Interruption &interruption);

private:
    void repair(const Words &words, const Interruption &interruption);
    Findings findings() const;
    bool stop();

    Scanner &m_scanner;
    std::function<qint64()> m_errorStatus;
    const ToldBits &m_told;
    Progress &m_progress;
    QString m_text;
};

/// Has one of the scanners scan, and repair where that is asked for.
template <typename SomeScanner>
Report examined(SomeScanner &scanner, const Examination::Words &words, const Arguments &arguments,
                Interruption &interruption, Progress &progress)
{
    ToldBits told;
    scanner.setDelegate(&told);
    const auto finally = qScopeGuard([&scanner] { scanner.setDelegate(nullptr); });
    return Examination(
               scanner, [&scanner] { return scanner.errorStatus(); }, told, progress)
        .carriedOut(words, arguments.has(repairOption) || arguments.has(speedupOption),
                    interruption);
}

} // namespace velq::cli
