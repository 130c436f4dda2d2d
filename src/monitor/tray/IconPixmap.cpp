#include "monitor/tray/IconPixmap.h"

#include <QtEndian>

namespace velq
{

namespace
{

constexpr int unseenSize = 22;

QImage unseen()
{
    QImage image(unseenSize, unseenSize, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

IconPixmap IconPixmap::fromImage(const QImage &image)
{
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
    IconPixmap pixmap{pixels.width(), pixels.height(),
                      QByteArray(pixels.sizeInBytes(), Qt::Uninitialized)};
    // A row of 32-bit pixels has no padding.
    qToBigEndian<quint32>(pixels.constBits(), qsizetype{pixels.width()} * pixels.height(),
                          pixmap.bytes.data());
    return pixmap;
}

QList<IconPixmap> IconPixmap::fromImages(const QList<QImage> &images)
{
    QList<IconPixmap> pixmaps;
    for (const QImage &image : images)
        pixmaps.append(fromImage(image));
    if (pixmaps.isEmpty())
        pixmaps.append(fromImage(unseen()));
    return pixmaps;
}

QDBusArgument &operator<<(QDBusArgument &argument, const IconPixmap &pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.bytes;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, IconPixmap &pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const ToolTip &toolTip)
{
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.icon << toolTip.title << toolTip.description;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, ToolTip &toolTip)
{
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.icon >> toolTip.title >> toolTip.description;
    argument.endStructure();
    return argument;
}

} // namespace velq
