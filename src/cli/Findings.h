#pragma once

#include "scanner/Scanner.h"

#include <QJsonObject>
#include <QList>
#include <QString>

namespace velq::cli
{

/// What a scanner has to show when its scan, or its repair, is over.
struct Findings {
    qint64 errorStatus = 0;
    qint64 issueCount = 0;
    QList<qint64> told; ///< the bits that its delegate was told, in order
    Scanner::Data data; ///< the scanner's own items: for as long as it does nothing

    bool areClean() const { return errorStatus == 0 && issueCount == 0; }

    /// For people: each item with the lines of its result, then how many problems there are, and by
    /// which bits. Whole lines.
    QString text() const;
    /// The same of a scan that was stopped. Its last result is left out: the check may have been
    /// robbed of its tool.
    QString textWhenStopped() const;
    /// For programs: "errorStatus", "issueCount", "delegate", and "items", whose names are those of
    /// the records' properties; an absent text is null.
    QJsonObject json() const;
};

} // namespace velq::cli
