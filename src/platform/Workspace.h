#pragma once

#include "platform/RunningApplication.h"

#include <QList>

namespace velq
{

/// The applications of the user's session, and what they open. Any thread.
class Workspace
{
public:
    /// Every process of this user that runs a program out of an application bundle, this one
    /// included. One whose program file was replaced or deleted meanwhile still counts.
    static QList<RunningApplication> runningApplications();

    /// Opens the application bundle at `path`: brings it forward if it runs, else starts it, on its
    /// own: it lives on when this process ends or is stopped with everything it has started. May
    /// wait a moment for the desktop. False when there is nothing to start there, or it did not
    /// start, or it does not let itself be brought forward.
    static bool launchApplication(const QString &path);

    /// Opens the page in the person's default browser, which lives on like an application. False
    /// when nothing on this machine opens pages; whether the browser likes it is not known.
    static bool openURL(const QString &address);
};

} // namespace velq
