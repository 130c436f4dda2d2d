#include "cli/ConsoleHost.h"

#include "common/NSAlert_Addition.h"

namespace velq::cli
{

ConsoleHost::ConsoleHost(AlertPanel &panel)
    : m_panel(panel)
{
}

void ConsoleHost::runModal(NSAlert_Addition &alert)
{
    alert.runModal(m_panel);
}

std::shared_ptr<QWidget> ConsoleHost::createIPErrorView(const QString & /*service*/)
{
    return nullptr;
}

std::shared_ptr<QWidget> ConsoleHost::createProxyControlView(const QList<ProxyServer> & /*proxies*/,
                                                             CloseProxy /*closeProxy*/)
{
    return nullptr;
}

} // namespace velq::cli
