#pragma once

#include "common/RunLoopTimer.h"
#include "platform/SystemVersion.h"

#include <QList>
#include <QObject>
#include <QPointer>

#include <memory>

class QWindow;

namespace velq
{

class CustomeButton;
class DistributedNotificationCenter;
class ImageView;
class Menu;
class MenuItem;
class Reachability;
class ResumeMonitor;
class StatusBar;
class StatusItem;
struct StatusItemView;
class UserNotificationCenter;
class WifiDeviceScanner;

/// What the delegate needs of its surroundings. All of it must outlive the delegate.
struct Surroundings {
    StatusBar &statusBar;
    UserNotificationCenter &userNotifications;
    DistributedNotificationCenter &distributedNotifications;
    SystemVersion systemVersion = SystemVersion::current();
};

/// The monitor: starts the device watch, puts the item into the status bar, probes the connection
/// and answers the menu. Main thread.
///
/// The outlets (`window` to `fixMenuItem`) are filled by the main interface before start-up, and
/// not owned.
class AppDelegate : public QObject
{
    Q_OBJECT

public:
    explicit AppDelegate(const Surroundings &surroundings);
    ~AppDelegate() override;

    /// Start-up, once, when the event loop is about to run.
    void applicationDidFinishLaunching();
    /// Nothing is left to be done at the end.
    void applicationWillTerminate();

    /// Makes the status item; a second call does nothing.
    void addStatusItem();
    /// Whether the system is newer than 10.9. A minor version above 9 says so whatever the major
    /// one is.
    bool osVersionAfter10_9() const;

    /// Probes the connection, shows the answer, and arms or disarms the repair entry.
    void monitorStatus();
    /// The distributed notification "MonitorStart": "YES" starts the device watch, all else stops
    /// it.
    void monitor(const QString &object);

    /// The menu's actions.
    Q_INVOKABLE void onFixIssue(QObject *sender);
    /// Opens the main application where its preferences say it lies; nothing if they do not say.
    Q_INVOKABLE void openMainApp(QObject *sender);
    /// Asks every running main application to end, unloads the monitor's launch agent, and ends the
    /// monitor.
    Q_INVOKABLE void onQuit(QObject *sender) const;

    /// The folder of the user's launch agents, made if missing.
    QString launchAgentPath() const;
    /// The monitor's launch agent in it; null when there is no such file.
    QString miniLaunchAgentPath() const;
    /// Runs "launchctl OPTION PATH" in the system's shell and waits for it; nothing happens unless
    /// a file exists at `path`, which may be null.
    void launchctlApplicationInPath(const QString &path, const QString &option) const;

    /// The status image blinks, green and blank, while a repair runs.
    void startAnimi();
    void endAnimi();
    void animi();

    bool hidden() const { return m_hidden; }
    void setHidden(bool hidden) { m_hidden = hidden; }
    QWindow *window() const { return m_window; }
    void setWindow(QWindow *window) { m_window = window; }
    std::shared_ptr<WifiDeviceScanner> scanner() const { return m_scanner; }
    void setScanner(const std::shared_ptr<WifiDeviceScanner> &scanner) { m_scanner = scanner; }
    Menu *mainMenu() const { return m_mainMenu; }
    void setMainMenu(Menu *menu) { m_mainMenu = menu; }
    StatusItemView *imageView() const { return m_imageView; }
    void setImageView(StatusItemView *view) { m_imageView = view; }
    ImageView *iconImage() const { return m_iconImage; }
    void setIconImage(ImageView *view) { m_iconImage = view; }
    ImageView *statusImage() const { return m_statusImage; }
    void setStatusImage(ImageView *view) { m_statusImage = view; }
    CustomeButton *menButton() const { return m_menButton; }
    void setMenButton(CustomeButton *button) { m_menButton = button; }
    QPointer<RunLoopTimer> timer() const { return m_timer; }
    void setTimer(const QPointer<RunLoopTimer> &timer) { m_timer = timer; }
    QPointer<RunLoopTimer> monitorTimer() const { return m_monitorTimer; }
    void setMonitorTimer(const QPointer<RunLoopTimer> &timer) { m_monitorTimer = timer; }
    MenuItem *fixMenuItem() const { return m_fixMenuItem; }
    void setFixMenuItem(MenuItem *item) { m_fixMenuItem = item; }
    /// The greyed entry that says the state in words.
    MenuItem *stateMenuItem() const { return m_stateMenuItem; }
    void setStateMenuItem(MenuItem *item) { m_stateMenuItem = item; }

private:
    void observeMonitorStart();
    void startMonitorTimer();
    void repairHasEnded();
    void probeOnChanges();
    void probeUnlessRepairing();
    void showState(const QString &imageName, const QString &words);
    void showWords(const QString &words);

    Surroundings m_surroundings;
    bool _isHasIcon = false;
    std::shared_ptr<StatusItem> _menuBarItem;
    bool m_hidden = false;
    QWindow *m_window = nullptr;
    std::shared_ptr<WifiDeviceScanner> m_scanner;
    Menu *m_mainMenu = nullptr;
    StatusItemView *m_imageView = nullptr;
    ImageView *m_iconImage = nullptr;
    ImageView *m_statusImage = nullptr;
    CustomeButton *m_menButton = nullptr;
    QPointer<RunLoopTimer> m_timer;
    QPointer<RunLoopTimer> m_monitorTimer;
    QList<QPointer<RunLoopTimer>> m_blinks; ///< those that a newer one took the place of
    int m_repairs = 0;                      ///< how many run now
    MenuItem *m_fixMenuItem = nullptr;
    MenuItem *m_stateMenuItem = nullptr;
    std::unique_ptr<Reachability> m_internet;
    std::unique_ptr<ResumeMonitor> m_resume;
};

} // namespace velq
