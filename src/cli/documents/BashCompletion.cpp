#include "cli/documents/BashCompletion.h"

#include "cli/Table.h"

#include <QStringList>

namespace velq::cli
{

namespace
{

// What only the computer knows is asked of the program itself, below the head of its table. bash
// expands the words that it offers, so no other characters may get there.
QStringList offered(const Operand &operand)
{
    if (operand.candidates != nullptr)
        return operand.candidates();
    return {QStringLiteral("$(\"$1\" %1 2>/dev/null | awk 'NR > 1 && $1 !~ /[^[:alnum:]._-]/ "
                           "{ print $1 }')")
                .arg(QLatin1String(operand.listing))};
}

QString caseOf(const char *wanted, const Command &command, const QStringList &words)
{
    return QStringLiteral("    %1:%2) words=\"%3 $words\" ;;\n")
        .arg(QLatin1String(wanted), QLatin1String(command.name), words.join(u' '));
}

QString casesOf(const Command &command)
{
    QStringList options;
    for (const Option &each : command.options)
        options.append(QLatin1String(each.name));
    QString cases;
    if (command.operand != nullptr)
        cases += caseOf("operand", command, offered(*command.operand) + options);
    if (!options.isEmpty())
        cases += caseOf("*", command, options);
    return cases;
}

} // namespace

QString bashCompletion()
{
    QStringList names;
    QString cases;
    for (const Command &each : commands) {
        names.append(QLatin1String(each.name));
        cases += casesOf(each);
    }
    return QStringLiteral(
               "# bash completion for velq\n"
               "_velq()\n"
               "{\n"
               "    local words='--json --verbose --help' wanted=command command='' word\n"
               "    local given=(\"${COMP_WORDS[@]:1:COMP_CWORD-1}\")\n"
               "    for word in \"${given[@]}\"; do\n"
               "        case $wanted:$word in\n"
               "        *:-*) ;;\n"
               "        command:*) command=$word wanted=operand ;;\n"
               "        *) wanted=option ;;\n"
               "        esac\n"
               "    done\n"
               "    case $wanted:$command in\n"
               "    command:*) words='%1 --help --version' ;;\n"
               "%2"
               "    esac\n"
               "    for word in \"${given[@]}\"; do\n"
               "        words=\" $words \"\n"
               "        words=${words/\" $word \"/ }\n"
               "    done\n"
               "    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- "
               "\"${COMP_WORDS[COMP_CWORD]}\")\n"
               "}\n"
               "complete -F _velq velq\n")
        .arg(names.join(u' '), cases);
}

} // namespace velq::cli
