#pragma once

#include <QString>

namespace velq
{

/// Writes one line to standard error, whoever handles Qt's own messages; characters that would make
/// it more than a line, or do things to a terminal, become blanks. Any thread: lines do not mix.
void log(const QString &line);

} // namespace velq
