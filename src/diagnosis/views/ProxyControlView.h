#pragma once

#include "diagnosis/DiagnosisHost.h"

#include <QWidget>

namespace velq
{

/// A checkbox for each proxy, one below the other, which switches it on and off. Main thread.
class ProxyControlView : public QWidget
{
public:
    /// The boxes are titled with the proxies' kinds, carry their places in the list as index
    /// (getIndex()), and are checked at first: a proxy that was found is on. A click tells
    /// `closeProxy`, which may be empty.
    ProxyControlView(const QList<ProxyServer> &proxies, DiagnosisHost::CloseProxy closeProxy,
                     QWidget *parent = nullptr);

private:
    void addBox(const QString &title, qsizetype row);

    DiagnosisHost::CloseProxy m_closeProxy;
};

} // namespace velq
