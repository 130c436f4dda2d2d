#pragma once

#include <QString>
#include <QStringList>

namespace velq
{

/// Starts a program, the first of the words, with the others as its arguments, as an application of
/// its own, with this process's environment: nobody's child, and in no control group of ours where
/// systemd runs. `identifier` (null for none) names it there. False when it cannot be started.
bool startDetached(const QStringList &words, const QString &identifier);

} // namespace velq
