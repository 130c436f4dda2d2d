#include "cli/Examination.h"

#include "cli/Interruption.h"
#include "cli/KeptSettings.h"
#include "cli/MissingRights.h"
#include "common/Log.h"

#include <utility>

namespace velq::cli
{

Examination::Examination(Scanner &scanner, std::function<qint64()> errorStatus,
                         const ToldBits &told, Progress &progress)
    : m_scanner(scanner)
    , m_errorStatus(std::move(errorStatus))
    , m_told(told)
    , m_progress(progress)
{
}

Report Examination::carriedOut(const Words &words, bool repairs, Interruption &interruption)
{
    const Interruption::Scope scope(interruption, [this] { return stop(); });
    m_progress.begin(QString::fromUtf8(words.scanning));
    m_scanner.scan();
    m_progress.end();
    if (interruption.signal() != 0)
        return {findings().textWhenStopped(), {}, Found};
    m_text = findings().text();
    if (repairs && !findings().areClean())
        repair(words, interruption);
    if (interruption.signal() != 0)
        return {m_text, {}, Found};
    const Findings last = findings();
    if (repairs && !last.areClean())
        explainMissingRights();
    // What is ignored is to stay.
    if (!repairs && last.issueCount > 0 && (last.errorStatus & words.repairable) != 0)
        m_text += QString::fromUtf8(words.advice) + u'\n';
    return {m_text, QJsonDocument(last.json()), last.areClean() ? Fine : Found};
}

void Examination::repair(const Words &words, const Interruption &interruption)
{
    const KeptSettings kept = KeptSettings::now();
    m_progress.begin(QString::fromUtf8(words.repairing));
    m_scanner.speedup();
    if (!words.endsWithScan)
        m_scanner.scan();
    m_progress.end();
    const bool stopped = interruption.signal() != 0;
    m_text += stopped ? QStringLiteral("\nStopped before the repair was over.\n")
                      : QStringLiteral("\nAfter the repair:\n") + findings().text();
    if (stopped || !findings().areClean())
        m_text += kept.wayBack();
}

Findings Examination::findings() const
{
    return {m_errorStatus(), m_scanner.issueCount(), m_told.bits(), m_scanner.data()};
}

bool Examination::stop()
{
    m_progress.hide();
    log(QStringLiteral("velq: stopping; to end at once, interrupt it again"));
    m_scanner.stopScan();
    m_scanner.stopSpeedup();
    return true;
}

} // namespace velq::cli
