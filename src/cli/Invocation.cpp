#include "cli/Invocation.h"

#include "cli/Table.h"

#include <algorithm>
#include <iterator>

namespace velq::cli
{

namespace
{

using Request = Invocation::Request;

const Command *commandNamed(const QString &name)
{
    const auto *const found = std::ranges::find_if(
        commands, [&](const Command &each) { return name == QLatin1String(each.name); });
    return found == std::end(commands) ? nullptr : found;
}

bool isOption(const QString &word)
{
    return word.startsWith(u'-');
}

bool isOfCommand(const Invocation &invocation, const QString &option)
{
    return invocation.command != nullptr
        && std::ranges::any_of(invocation.command->options, [&](const Option &each) {
               return option == QLatin1String(each.name);
           });
}

// Both at once: the help is the larger answer.
bool readOption(Invocation &invocation, const QString &option)
{
    if (option == QLatin1String("--json"))
        invocation.arguments.json = true;
    else if (option == QLatin1String("--verbose"))
        invocation.arguments.verbose = true;
    else if (option == QLatin1String("--help") || option == QLatin1String("-h"))
        invocation.request = Request::ShowHelp;
    else if (isOfCommand(invocation, option))
        invocation.arguments.options.append(option);
    else if (option != QLatin1String("--version"))
        return false;
    else if (invocation.request != Request::ShowHelp)
        invocation.request = Request::ShowVersion;
    return true;
}

bool readOperand(Invocation &invocation, const QString &word)
{
    if (invocation.command->operand == nullptr || !invocation.arguments.operands.isEmpty())
        return false;
    invocation.arguments.operands.append(word);
    return true;
}

// Empty when it makes sense.
QString readArgument(Invocation &invocation, const QString &word)
{
    if (isOption(word))
        return readOption(invocation, word) ? QString()
                                            : QStringLiteral("unknown option '%1'").arg(word);
    return readOperand(invocation, word) ? QString()
                                         : QStringLiteral("unexpected argument '%1'").arg(word);
}

// Takes the command from the words, wherever it stands among options. Empty when there is one, or
// none is named.
QString readCommand(Invocation &invocation, QStringList &words)
{
    auto named = std::ranges::find_if_not(words, isOption);
    // What people try before they know of the option.
    if (named != words.end() && *named == QLatin1String("help")) {
        invocation.request = Request::ShowHelp;
        words.erase(named);
        named = std::ranges::find_if_not(words, isOption);
    }
    if (named == words.end())
        return {};
    const QString name = *named;
    words.erase(named);
    invocation.command = commandNamed(name);
    return invocation.command != nullptr
        ? QString()
        : QStringLiteral("unknown command '%1'; velq --help lists those that there are").arg(name);
}

// Of a call that is to be carried out; empty when nothing is.
QString whatIsMissing(const Invocation &invocation)
{
    if (invocation.command == nullptr)
        return QStringLiteral("which command? velq --help lists them");
    const Operand *const operand = invocation.command->operand;
    return operand != nullptr && invocation.arguments.operands.isEmpty()
        ? QStringLiteral("which %1?").arg(QLatin1String(operand->name))
        : QString();
}

QString read(Invocation &invocation, QStringList words)
{
    QString complaint = readCommand(invocation, words);
    for (const QString &word : words) {
        if (!complaint.isNull())
            return complaint;
        complaint = readArgument(invocation, word);
    }
    return complaint.isNull() && invocation.request == Request::Run ? whatIsMissing(invocation)
                                                                    : complaint;
}

} // namespace

Invocation Invocation::parse(const QStringList &words)
{
    Invocation invocation;
    invocation.complaint = read(invocation, words);
    if (!invocation.complaint.isNull())
        invocation.request = Request::Refuse;
    return invocation;
}

} // namespace velq::cli
