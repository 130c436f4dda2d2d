#include "diagnosis/views/IPErrorView.h"

#include "common/Image.h"

#include <QIcon>
#include <QLabel>
#include <QLineEdit>

namespace velq
{

namespace
{

constexpr int viewWidth = 492;
constexpr int viewHeight = 30;
constexpr QRect iconFrame(0, 9, 12, 12);
constexpr int labelY = 6;
constexpr int labelHeight = 18;
constexpr int gap = 2;

// The frames' coordinates grow upwards.
constexpr QRect turned(const QRect &frame)
{
    return {frame.x(), viewHeight - frame.y() - frame.height(), frame.width(), frame.height()};
}

QPixmap pixmapNamed(const QString &name, const QSize &size, qreal ratio)
{
    const auto image = Image::imageNamed(name);
    QIcon icon;
    for (const QString &file : image == nullptr ? QStringList() : image->files())
        icon.addFile(file);
    return icon.pixmap(size, ratio);
}

} // namespace

IPErrorView::IPErrorView(const QString &service, QWidget *parent)
    : QWidget(parent)
{
    setFixedSize(viewWidth, viewHeight);
    if (service.isNull())
        return;
    addIcon(iconFrame);
    const int labelX = iconFrame.x() + iconFrame.width();
    addLabel(service, {labelX, labelY, viewWidth - iconFrame.width() - gap, labelHeight});
}

void IPErrorView::addIcon(const QRect &frame)
{
    auto *const icon = new QLabel(this);
    icon->setScaledContents(true);
    icon->setPixmap(
        pixmapNamed(QStringLiteral("icon_list_puzzle"), frame.size(), devicePixelRatioF()));
    icon->setGeometry(turned(frame));
}

void IPErrorView::addLabel(const QString &text, const QRect &frame)
{
    auto *const label = new QLineEdit(text, this);
    label->setFrame(false);
    label->setReadOnly(true);
    label->setFont(QFont(QStringLiteral("Helvetica Neue"), 10));
    label->setAccessibleName(QStringLiteral("Network service"));
    label->setGeometry(turned(frame));
}

} // namespace velq
