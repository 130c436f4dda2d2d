#pragma once

#include "monitor/tray/SessionBusConnection.h"

#include <QObject>
#include <QStringList>

namespace velq
{

/// The tray's half of the protocol, on a connection of its own: takes registrations, and counts the
/// signals that the items send.
class FakeWatcher : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ answerWhetherThereIsAHost)

public:
    FakeWatcher();

    bool answerWhetherThereIsAHost();
    int timesAsked() const { return m_timesAsked; }
    /// There is one at first. Tells the items, as a watcher does.
    void setHasHost(bool hasHost);

    /// Waits for the answer while the event loop runs; no value for an error.
    QVariant call(const QString &path, const QString &interface, const QString &method,
                  const QVariantList &arguments);
    QVariant read(const QString &path, const QString &interface, const QString &property);
    QVariant itemProperty(const char *property);
    /// Sends a method call to the last item that registered.
    void callItem(const char *method, const QVariantList &arguments);

    QStringList registered;
    QStringList signalsSeen;

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString &service);

private Q_SLOTS:
    void onSignal(const QDBusMessage &message);

Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    void listen(const char *interface, const char *member);

    SessionBusConnection m_connection;
    bool m_hasHost = true;
    int m_timesAsked = 0;
};

} // namespace velq
