#include "shell/DaemonInstaller.h"
#include "shell/ShellUtl.h"

#include <QCoreApplication>

#include <cstdio>
#include <iostream>
#include <string>

// What a program of a person's does with the root daemon, one line of standard input after the
// other: "install", "remove", or a command line for root's shell. Each is answered with one line.

namespace
{

using namespace velq;

std::string removed()
{
    const AdministratorRights::Result result = DaemonInstaller::removeDaemon();
    switch (result.outcome) {
    case AdministratorRights::Outcome::Done:
        return "done";
    case AdministratorRights::Outcome::Cancelled:
        return "cancelled";
    default:
        return "failed: " + result.message.section(QLatin1Char('\n'), 0, 0).toStdString();
    }
}

std::string answered(const std::string &line)
{
    const QString output = ShellUtl::runShellWithDemone(
        QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QString::fromStdString(line)});
    return output.isNull() ? "null" : "output: " + output.trimmed().toStdString();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    for (std::string line; std::getline(std::cin, line);) {
        if (line == "install")
            std::cout << (DaemonInstaller::installDaemon() ? "YES" : "NO") << std::endl;
        else if (line == "remove")
            std::cout << removed() << std::endl;
        else
            std::cout << answered(line) << std::endl;
    }
    return EXIT_SUCCESS;
}
