#pragma once

#include "cli/Report.h"

#include <QString>

namespace velq::cli
{

/// The connection as it is at one moment.
struct Connection {
    bool connected = false;
    QString interface; ///< the one that the traffic takes; null when none does

    /// Looks now; runs a tool and waits for it.
    static Connection now();

    /// Found unless connected, with `text`, one sentence without its full stop, before what is
    /// known of the interface.
    Report report(const QString &text) const;
};

} // namespace velq::cli
