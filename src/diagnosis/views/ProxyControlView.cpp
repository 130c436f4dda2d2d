#include "diagnosis/views/ProxyControlView.h"

#include "scanner/NSButton_service.h"

#include <QCheckBox>

namespace velq
{

namespace
{

constexpr int viewWidth = 492;
constexpr int rowHeight = 30;
constexpr int boxY = 5;
constexpr int boxHeight = 20;

} // namespace

ProxyControlView::ProxyControlView(const QList<ProxyServer> &proxies,
                                   DiagnosisHost::CloseProxy closeProxy, QWidget *parent)
    : QWidget(parent)
    , m_closeProxy(std::move(closeProxy))
{
    setFixedSize(viewWidth, rowHeight * static_cast<int>(proxies.size()));
    for (qsizetype row = 0; row < proxies.size(); ++row)
        addBox(proxies[row].proxyType, row);
}

void ProxyControlView::addBox(const QString &title, qsizetype row)
{
    auto *const box = new QCheckBox(title, this);
    setIndex(*box, row);
    box->setChecked(true);
    // Coordinates that grow upwards put the box into the row's lower part, with as much above it.
    const int top = rowHeight - boxY - boxHeight;
    box->setGeometry(0, static_cast<int>(row) * rowHeight + top, viewWidth, boxHeight);
    connect(box, &QCheckBox::clicked, this, [this, box] {
        if (m_closeProxy)
            m_closeProxy(*box);
    });
}

} // namespace velq
