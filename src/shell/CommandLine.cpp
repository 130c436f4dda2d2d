#include "shell/CommandLine.h"

#include "shell/ShellUtl.h"

#include <QRegularExpression>

namespace velq
{

namespace
{

const QString shell = QStringLiteral("/bin/sh");

QStringList argumentsFor(const QString &commandLine)
{
    return {QStringLiteral("-c"), commandLine};
}

} // namespace

QString outputOf(const QString &commandLine)
{
    return ShellUtl::runShell(shell, argumentsFor(commandLine));
}

QString outputAsRoot(const QString &commandLine)
{
    return ShellUtl::runShellWithDemone(shell, argumentsFor(commandLine));
}

QString quotedWord(QString word)
{
    return u'\'' + word.replace(u'\'', QStringLiteral("'\\''")) + u'\'';
}

QString typedWord(const QString &word)
{
    static const QRegularExpression plain(QStringLiteral("\\A[A-Za-z0-9._/-]+\\z"));
    return plain.match(word).hasMatch() ? word : quotedWord(word);
}

} // namespace velq
