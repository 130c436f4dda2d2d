#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

namespace velq::cli
{

/// What the scanning commands found last time, for each of them a file of the person's in the
/// folder velq/results of $XDG_STATE_HOME (~/.local/state). Any thread.
class LastResults
{
public:
    LastResults() = delete;

    /// In the place of the command's last result. What cannot be kept is forgotten without a word:
    /// the command has done its work.
    static void keep(const QString &command, const QJsonDocument &result);

    /// All that are kept, by their command's name: "when", in ISO 8601, and "result".
    static QJsonObject all();
};

} // namespace velq::cli
