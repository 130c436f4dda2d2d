#pragma once

#include <QJsonDocument>
#include <QString>

namespace velq::cli
{

/// What the program ends with; scripts go by it.
enum ExitStatus : int {
    Fine = 0,
    Found = 1,    ///< something is wrong: no connection, or the command could not be carried out
    WrongUse = 2, ///< the command line makes no sense; nothing was done
};

/// What a command has found out, for people and for programs.
struct Report {
    QString text;       ///< whole lines
    QJsonDocument json; ///< the same, an absent text being null; null when it tells nothing whole
    ExitStatus status = Fine;
};

} // namespace velq::cli
