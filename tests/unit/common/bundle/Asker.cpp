// An application that asks for one thing, prints the answer and ends at once: nothing that is still
// to be sent then gets a chance.

#include "common/CommonFunction.h"

#include <QCoreApplication>

#include <cstdio>
#include <unistd.h>

namespace
{

using velq::CommonFunction;

QString posted(const QStringList &arguments)
{
    CommonFunction::sendMessageToOtherApp(arguments.value(2), arguments.value(3));
    return QStringLiteral("posted");
}

QString answer(const QStringList &arguments)
{
    const QString question = arguments.value(1);
    if (question == QLatin1String("name"))
        return CommonFunction::getProjectName();
    if (question == QLatin1String("version")) {
        const QString version = CommonFunction::getProjectVersion();
        return version.isNull() ? QStringLiteral("null") : version;
    }
    if (question == QLatin1String("online"))
        return QString::number(CommonFunction::getOnlineUsersFlag());
    if (question == QLatin1String("system"))
        return CommonFunction::getSystemVersionForUrl();
    if (question == QLatin1String("connected"))
        return CommonFunction::connectedToInternet() ? QStringLiteral("yes") : QStringLiteral("no");
    return question == QLatin1String("post") ? posted(arguments) : QStringLiteral("what?");
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    std::puts(answer(QCoreApplication::arguments()).toUtf8().constData());
    (void)std::fflush(stdout);
    _exit(0);
}
