#include "monitor/AppDelegate.h"

#include "common/NotificationCenter.h"
#include "common/Reachability.h"
#include "devices/WifiDeviceScanner.h"
#include "install/MonitorInstaller.h"
#include "monitor/MenuInterface.h"
#include "monitor/StatusItem.h"
#include "platform/DistributedNotificationCenter.h"
#include "platform/GlobalQueue.h"
#include "platform/MainQueue.h"
#include "platform/PropertyList.h"
#include "platform/ResumeMonitor.h"
#include "platform/Workspace.h"
#include "shell/process/ChildProcess.h"

#include <QCoreApplication>
#include <QDir>

#include <utility>

namespace velq
{

namespace
{

using namespace std::chrono_literals;

constexpr QLatin1String mainApplication("com.zelmor.Velq");

// The platform's timers take a single-precision 0.2 s; ours count milliseconds.
constexpr auto blinkInterval = 200ms;

constexpr QLatin1String normalIcon("statusItemIconNormal");
constexpr QLatin1String greenIcon("statusItemIconGreen");
constexpr QLatin1String redIcon("statusItemIconRed");

// One whose commands cannot be started is over, too; the icon tells that it did not help.
void repair()
{
    try {
        MenuInterface::speedUp();
    } catch (const process::LaunchError &) {
    }
}

} // namespace

AppDelegate::AppDelegate(const Surroundings &surroundings)
    : m_surroundings(surroundings)
{
}

AppDelegate::~AppDelegate()
{
    NotificationCenter::defaultCenter().removeObserver(this);
}

void AppDelegate::applicationDidFinishLaunching()
{
    m_scanner = WifiDeviceScanner::create(m_surroundings.userNotifications);
    m_scanner->monitor();
    addStatusItem();
    monitorStatus();
    observeMonitorStart();
    startMonitorTimer();
    probeOnChanges();
}

void AppDelegate::applicationWillTerminate()
{
}

void AppDelegate::addStatusItem()
{
    if (_isHasIcon)
        return;
    _menuBarItem = m_surroundings.statusBar.statusItemWithLength(StatusBar::variableLength);
    _menuBarItem->setView(m_imageView);
    const auto normal = Image::imageNamed(normalIcon);
    if (normal != nullptr && osVersionAfter10_9())
        normal->setTemplate(true);
    m_menButton->setMenu(m_mainMenu);
    m_statusImage->setImage(Image::imageNamed(greenIcon));
    _isHasIcon = true;
}

bool AppDelegate::osVersionAfter10_9() const
{
    const SystemVersion &version = m_surroundings.systemVersion;
    return version.majorVersion > 10 || version.minorVersion > 9;
}

void AppDelegate::monitorStatus()
{
    if (MenuInterface::networkConnect()) {
        m_fixMenuItem->setAction({});
        m_fixMenuItem->setTarget(nullptr);
        showState(greenIcon, tr("Connected to the network"));
    } else {
        m_fixMenuItem->setTarget(this);
        m_fixMenuItem->setAction("onFixIssue");
        showState(redIcon, tr("No network connection"));
    }
}

void AppDelegate::showState(const QString &imageName, const QString &words)
{
    m_statusImage->setImage(Image::imageNamed(imageName));
    showWords(words);
}

void AppDelegate::showWords(const QString &words)
{
    if (m_stateMenuItem != nullptr)
        m_stateMenuItem->setTitle(words);
    if (_menuBarItem != nullptr)
        _menuBarItem->setText(words);
}

void AppDelegate::monitor(const QString &object)
{
    if (object == QLatin1String("YES"))
        m_scanner->monitor();
    else
        m_scanner->stopMonitor();
}

// Nothing guards against a second choice meanwhile: the second repair runs beside the first.
void AppDelegate::onFixIssue(QObject *)
{
    RunLoopTimer::invalidate(m_monitorTimer);
    m_monitorTimer.clear();
    startAnimi();
    showWords(tr("Repairing the connection"));
    ++m_repairs;
    GlobalQueue::async([self = QPointer<AppDelegate>(this)] {
        repair();
        MainQueue::async([self] {
            if (!self.isNull())
                self->repairHasEnded();
        });
    });
}

void AppDelegate::repairHasEnded()
{
    --m_repairs;
    endAnimi();
    monitorStatus();
    startMonitorTimer();
}

void AppDelegate::startAnimi()
{
    m_hidden = false;
    m_statusImage->setImage(Image::imageNamed(greenIcon));
    m_blinks.append(m_timer);
    m_timer = RunLoopTimer::scheduled(blinkInterval, this, [this] { animi(); });
}

void AppDelegate::animi()
{
    m_hidden = !m_hidden;
    m_statusImage->setImage(Image::imageNamed(m_hidden ? QStringLiteral("") : greenIcon));
}

void AppDelegate::endAnimi()
{
    m_hidden = false;
    m_statusImage->setImage(Image::imageNamed(greenIcon));
    RunLoopTimer::invalidate(m_timer);
    m_timer.clear();
    // A repair beside another has left that one's timer behind.
    if (m_repairs == 0) {
        for (const QPointer<RunLoopTimer> &blink : std::exchange(m_blinks, {}))
            RunLoopTimer::invalidate(blink);
    }
}

void AppDelegate::openMainApp(QObject *)
{
    const auto preferences = PropertyList::dictionaryFromFile(
        QDir::homePath() + QStringLiteral("/Library/Preferences/com.zelmor.Velq.plist"));
    const QVariant path = preferences.value_or(QVariantMap()).value(QStringLiteral("appPath"));
    if (path.typeId() == QMetaType::QString)
        (void)Workspace::launchApplication(path.toString());
}

void AppDelegate::onQuit(QObject *) const
{
    for (const RunningApplication &application : Workspace::runningApplications()) {
        if (application.bundleIdentifier() == mainApplication)
            (void)application.terminate();
    }
    launchctlApplicationInPath(miniLaunchAgentPath(), QStringLiteral("unload"));
    QCoreApplication::quit();
}

QString AppDelegate::launchAgentPath() const
{
    return MonitorInstaller::launchAgentPath();
}

QString AppDelegate::miniLaunchAgentPath() const
{
    return MonitorInstaller::miniLaunchAgentPath();
}

void AppDelegate::launchctlApplicationInPath(const QString &path, const QString &option) const
{
    MonitorInstaller::launchctlApplicationInPath(path, option);
}

void AppDelegate::observeMonitorStart()
{
    connect(&m_surroundings.distributedNotifications, &DistributedNotificationCenter::posted, this,
            [this](const QString &name, const QString &object) {
                if (name == QLatin1String("MonitorStart"))
                    monitor(object);
            });
}

void AppDelegate::startMonitorTimer()
{
    RunLoopTimer::invalidate(m_monitorTimer);
    m_monitorTimer = RunLoopTimer::scheduled(2s, this, [this] { monitorStatus(); });
}

// The timer alone would show a pulled plug up to two seconds late.
void AppDelegate::probeOnChanges()
{
    m_internet = Reachability::reachabilityForInternetConnection();
    NotificationCenter::defaultCenter().addObserver(this, kNetworkReachabilityChangedNotification,
                                                    m_internet.get(),
                                                    [this](QObject *) { probeUnlessRepairing(); });
    if (m_internet != nullptr)
        m_internet->startNotifer();
    m_resume = std::make_unique<ResumeMonitor>();
    connect(m_resume.get(), &ResumeMonitor::resumed, this, &AppDelegate::probeUnlessRepairing);
}

// A repair runs as long as there is no timer, and then the icon is the animation's.
void AppDelegate::probeUnlessRepairing()
{
    if (!m_monitorTimer.isNull())
        monitorStatus();
}

} // namespace velq
