#pragma once

#include <QRectF>
#include <QString>
#include <QtGlobal>

class QFont;

namespace velq
{

/// Small questions that the product's applications share. No instances, no state. Any thread unless
/// an operation says otherwise.
class CommonFunction
{
public:
    CommonFunction() = delete;

    /// Whether Wi-Fi is off (0), on without a network (1) or in one (2), as the tool airport says;
    /// 1 where that tool is missing. Blocks while it runs, which a tool that prints more than a
    /// pipe holds (64 KiB) does for good.
    static int wifiEnable();
    /// Whether there is a way to a public host. Blocks while its name is resolved.
    static bool connectedToInternet();

    /// Tells all processes of the session that listen to this name. Does not wait for them; without
    /// a session nobody hears it. Needs Qt's application, as everything that sends on the bus.
    static void sendMessageToOtherApp(const QString &name, const QString &obj);

    /// The person's home folder, and the path below it. Slashes too many are left out.
    static QString getHomePathByAppendSubPath(const QString &subPath);

    /// The name that people know the running application by.
    static QString getProjectName();
    /// "CFBundleShortVersionString" of the main bundle; null when it has none.
    static QString getProjectVersion();
    /// How we call ourselves in web requests.
    static QString getProjectNameForHttpRequest();
    /// "OnlineUsers" of the main bundle as an integer; 0 when it has none, or no number there.
    static qint64 getOnlineUsersFlag();
    /// The system's minor and patch version run together, without the major one: "95" for 10.9.5.
    /// Who answers the web requests knows it in this form.
    static QString getSystemVersionForUrl();

    /// The place that the text takes in lines no wider than `width`, in logical pixels; no place
    /// for the null text. `dic` is the one attribute that measuring goes by. Main thread, with a
    /// QGuiApplication; in the library of views, as nothing else here needs windows.
    static float stringWidth(const QString &text, const QFont &dic, float width);
    static QRectF stringRect(const QString &text, const QFont &dic, float width);
};

} // namespace velq
