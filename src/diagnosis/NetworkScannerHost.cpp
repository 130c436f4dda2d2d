#include "common/NSAlert_Addition.h"
#include "common/PublicHosts.h"
#include "diagnosis/DiagnosisHost.h"
#include "diagnosis/NetworkScanner.h"
#include "platform/MainQueue.h"
#include "platform/Workspace.h"

namespace velq
{

namespace
{

// A scan lets go of the last one's views on its own thread, where no window may end.
std::shared_ptr<QWidget> endingOnMainThread(std::shared_ptr<QWidget> view)
{
    if (view == nullptr)
        return nullptr;
    QWidget *const widget = view.get();
    return {widget, [view = std::move(view)](QWidget *) mutable {
                MainQueue::async([last = std::move(view)] { (void)last; });
            }};
}

} // namespace

std::shared_ptr<QWidget> NetworkScanner::createErrorViewForIPError() const
{
    if (m_host == nullptr)
        return nullptr;
    const QString service = networkServiceForInterface(currentNetworkInterface());
    std::shared_ptr<QWidget> view;
    MainQueue::sync([&] { view = m_host->createIPErrorView(service); });
    return endingOnMainThread(std::move(view));
}

std::shared_ptr<QWidget> NetworkScanner::createProxyControlView()
{
    if (m_host == nullptr)
        return nullptr;
    std::shared_ptr<QWidget> view;
    MainQueue::sync([&] {
        view = m_host->createProxyControlView(
            m_proxies, [this](const QObject &sender) { closeProxy(sender); });
    });
    return endingOnMainThread(std::move(view));
}

// The tag of the clicked button; what follows from it is done where the alert was asked for, not on
// the main thread, which commands would block.
std::optional<qint64> NetworkScanner::answerTo(const Alert &alert) const
{
    std::optional<qint64> answer;
    const auto show = [&] {
        const auto panel = NSAlert_Addition::alertWithMessage(
            alert.message, alert.description, alert.firstButton, [&](qint64 tag) { answer = tag; },
            {alert.otherButton});
        if (m_host == nullptr)
            panel->buttonPressed(NSAlert_Addition::cancelTag);
        else
            m_host->runModal(*panel);
    };
    if (m_host == nullptr)
        show();
    else
        MainQueue::sync(show);
    return answer;
}

void NetworkScanner::alertAboutRouter()
{
    const auto answer = answerTo(
        {.message = QStringLiteral("The IP address of router is abnormal."),
         .description = QStringLiteral("Please check the settings of your router or contact ISP."),
         .firstButton = QStringLiteral("OK"),
         .otherButton = QStringLiteral("Feedback")});
    if (answer == NSAlert_Addition::cancelTag)
        stopScan();
    else if (answer.has_value())
        (void)Workspace::openURL(publichosts::faqPage);
}

} // namespace velq
