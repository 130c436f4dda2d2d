#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QImage>
#include <QList>

namespace velq
{

/// A picture as StatusNotifierItem sends it, "(iiay)": four bytes a pixel, alpha, red, green, blue,
/// not premultiplied, rows from the top, whatever the machine's byte order.
struct IconPixmap {
    int width = 0;
    int height = 0;
    QByteArray bytes;

    static IconPixmap fromImage(const QImage &image);
    /// At least one: an empty list would make hosts show a picture of their own, so no image is a
    /// pixmap that nothing is seen of.
    static QList<IconPixmap> fromImages(const QList<QImage> &images);
};

/// A tool tip as StatusNotifierItem sends it, "(sa(iiay)ss)".
struct ToolTip {
    QString iconName;
    QList<IconPixmap> icon;
    QString title;
    QString description;
};

QDBusArgument &operator<<(QDBusArgument &argument, const IconPixmap &pixmap);
const QDBusArgument &operator>>(const QDBusArgument &argument, IconPixmap &pixmap);
QDBusArgument &operator<<(QDBusArgument &argument, const ToolTip &toolTip);
const QDBusArgument &operator>>(const QDBusArgument &argument, ToolTip &toolTip);

} // namespace velq
