#include "cli/Status.h"

#include "cli/Connection.h"

namespace velq::cli
{

Report status()
{
    const Connection connection = Connection::now();
    return connection.report(connection.connected ? QStringLiteral("Connected to the network")
                                                  : QStringLiteral("No network connection"));
}

} // namespace velq::cli
