#include "diagnosis/views/WindowHost.h"

#include "common/NSAlert_Addition.h"
#include "common/views/AlertWindow.h"
#include "diagnosis/views/IPErrorView.h"
#include "diagnosis/views/ProxyControlView.h"
#include "platform/MainQueue.h"

#include <QWidget>

namespace velq
{

namespace
{

// Guarded: a window that shows the view may have taken it along when it ended. And later, even on
// the main thread, as the view's own click may be what made its holder let go.
std::shared_ptr<QWidget> held(QWidget *view)
{
    return {view, [guard = QPointer<QWidget>(view)](QWidget *) {
                MainQueue::async([guard] { delete guard; });
            }};
}

} // namespace

WindowHost::WindowHost(QWidget *window)
    : m_window(window)
{
}

void WindowHost::runModal(NSAlert_Addition &alert)
{
    AlertWindow panel(m_window);
    alert.runModal(panel);
}

std::shared_ptr<QWidget> WindowHost::createIPErrorView(const QString &service)
{
    return held(new IPErrorView(service));
}

std::shared_ptr<QWidget> WindowHost::createProxyControlView(const QList<ProxyServer> &proxies,
                                                            CloseProxy closeProxy)
{
    return held(new ProxyControlView(proxies, std::move(closeProxy)));
}

} // namespace velq
