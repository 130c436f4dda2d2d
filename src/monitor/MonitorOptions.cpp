#include "monitor/MonitorOptions.h"

#include <QHash>

namespace velq
{

MonitorOptions MonitorOptions::parse(const QStringList &arguments)
{
    static const QHash<QString, Request> known{
        {QStringLiteral("--console"), Request::RunInConsole},
        {QStringLiteral("--help"), Request::ShowHelp},
        {QStringLiteral("-h"), Request::ShowHelp},
        {QStringLiteral("--version"), Request::ShowVersion},
    };
    MonitorOptions options;
    for (const QString &argument : arguments) {
        if (!known.contains(argument))
            return {Request::Refuse, argument};
        options.request = known.value(argument);
    }
    return options;
}

QString MonitorOptions::usage()
{
    return QStringLiteral("usage: velq-monitor [--console] [--help] [--version]");
}

QString MonitorOptions::help()
{
    return usage()
        + QStringLiteral(
               "\n\n"
               "Watches the network connection from the status bar, or from the terminal\n"
               "where there is no display.\n\n"
               "  --console   stay in the terminal: a line for each change\n"
               "  -h, --help  show this text\n"
               "  --version   show the version\n");
}

} // namespace velq
