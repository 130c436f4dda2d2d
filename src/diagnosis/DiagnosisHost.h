#pragma once

#include "scanner/ProxyServer.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>

class QObject;
class QWidget;

namespace velq
{

class NSAlert_Addition;

/// What the diagnosis asks of the program that it runs in: the windows, which not every program
/// has. Called on the main thread only, whoever runs the scan.
class DiagnosisHost
{
public:
    /// Told of the checkbox that was clicked: its property "checked" is its new state, its index
    /// (getIndex()) that of its proxy.
    using CloseProxy = std::function<void(const QObject &sender)>;

    DiagnosisHost() = default;
    DiagnosisHost(const DiagnosisHost &) = delete;
    DiagnosisHost &operator=(const DiagnosisHost &) = delete;
    virtual ~DiagnosisHost() = default;

    /// Shows the alert and returns when it has been answered; one that nobody can answer is
    /// answered by its first button.
    virtual void runModal(NSAlert_Addition &alert) = 0;

    /// A row that names the service without an address; an empty one for the null name. Null in a
    /// program without windows.
    virtual std::shared_ptr<QWidget> createIPErrorView(const QString &service) = 0;
    /// A checkbox for each proxy. Null in a program without windows.
    virtual std::shared_ptr<QWidget> createProxyControlView(const QList<ProxyServer> &proxies,
                                                            CloseProxy closeProxy) = 0;
};

} // namespace velq
