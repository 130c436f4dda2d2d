#pragma once

#include <QString>

namespace velq
{

/// A whole command line, given to the shell as it stands: the way in which everything is asked of
/// the system and changed in it. Any thread; both block.

/// What it prints on standard output; null when that is no UTF-8.
QString outputOf(const QString &commandLine);

/// The same as root; null also when nobody could run it.
QString outputAsRoot(const QString &commandLine);

/// A word in such a line that a command shall get unchanged, whatever is in it.
QString quotedWord(QString word);

/// The same as a person would write it, who reads it: without quotation marks where it needs none.
QString typedWord(const QString &word);

} // namespace velq
