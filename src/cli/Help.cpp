#include "cli/Help.h"

#include "cli/Table.h"

#include <QStringList>

namespace velq::cli
{

namespace
{

QString line(const char *left, const QString &right)
{
    return QStringLiteral("  %1 %2\n").arg(QLatin1String(left), -11).arg(right);
}

QString foundLine(const Command *command)
{
    if (command == nullptr)
        return QStringLiteral("something is wrong, or still is");
    return command->found != nullptr ? QString::fromUtf8(command->found)
                                     : QStringLiteral("the command could not be carried out");
}

QString commandLines()
{
    QString lines;
    for (const Command &each : commands)
        lines += line(each.name, QString::fromUtf8(each.summary));
    return lines;
}

QString operandLines(const Command *command)
{
    if (command == nullptr || command->operand == nullptr)
        return {};
    QString lines = line(command->operand->name, QString::fromUtf8(command->operand->meaning));
    if (!isListed(*command->operand))
        for (const QString &word : command->operand->candidates())
            lines += line("", word);
    return lines + u'\n';
}

QString optionLines(const Command *command)
{
    QString lines;
    if (command != nullptr)
        for (const Option &each : command->options)
            lines += line(each.name, QString::fromUtf8(each.meaning));
    lines += line("--json", QStringLiteral("answer for programs, in JSON"))
        + line("--verbose", QStringLiteral("show what the system's tools complain of, too"))
        + line("-h, --help", QStringLiteral("show this text"));
    if (command == nullptr)
        lines += line("--version", QStringLiteral("show the version"));
    return lines;
}

} // namespace

bool isListed(const Operand &operand)
{
    return operand.candidates == nullptr
        || QString::fromUtf8(operand.meaning).contains(operand.candidates().value(0));
}

QString synopsis(const Command &command)
{
    QString text = QStringLiteral("velq %1").arg(QLatin1String(command.name));
    if (command.operand != nullptr)
        text += u' ' + QLatin1String(command.operand->name);
    for (const Option &each : command.options)
        text += QStringLiteral(" [%1]").arg(QLatin1String(each.name));
    return text;
}

QString usage(const Command *command)
{
    if (command != nullptr)
        return QStringLiteral("usage: %1 [--json] [--help]\n").arg(synopsis(*command));
    return QStringLiteral("usage: velq COMMAND [ARGUMENTS] [--json]\n"
                          "       velq [COMMAND] --help\n"
                          "       velq --version\n");
}

QString exitStatuses(const Command *command)
{
    return line("0", QStringLiteral("all is well")) + line("1", foundLine(command))
        + line("2", QStringLiteral("the command line makes no sense"));
}

QString help(const Command *command)
{
    QString text = usage(command) + u'\n';
    if (command != nullptr)
        text += QString::fromUtf8(command->description) + QStringLiteral("\n\n");
    else
        text += QStringLiteral("Looks after the network connection.\n\nCommands:\n")
            + commandLines() + u'\n';
    return text + operandLines(command) + QStringLiteral("Options:\n") + optionLines(command)
        + QStringLiteral("\nExit status:\n") + exitStatuses(command);
}

} // namespace velq::cli
