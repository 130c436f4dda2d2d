#include "monitor/tray/ViewRenderer.h"

#include "monitor/StatusItem.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>

#include <algorithm>

namespace velq
{

namespace
{

constexpr QRgb untinted = 0;

QRgb tintOf(const Image &image)
{
    return image.isTemplate() ? QGuiApplication::palette().color(QPalette::WindowText).rgba()
                              : untinted;
}

QImage tinted(QImage image, QRgb tint)
{
    if (tint == untinted)
        return image;
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), QColor::fromRgba(tint));
    return image;
}

QList<QImage> read(const Image &image, QRgb tint)
{
    QList<QImage> images;
    for (const QString &file : image.files()) {
        const QImage pixels(file);
        if (!pixels.isNull())
            images.append(
                tinted(pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied), tint));
    }
    std::ranges::sort(images, std::less(), &QImage::width);
    return images;
}

const QImage &bestForWidth(const QList<QImage> &images, int width)
{
    const auto found = std::ranges::lower_bound(images, width, std::less(), &QImage::width);
    return found == images.end() ? images.back() : *found;
}

void drawAbove(QImage &lower, const QList<QImage> &upper)
{
    QPainter painter(&lower);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(lower.rect(), bestForWidth(upper, lower.width()));
}

} // namespace

QList<QImage> ViewRenderer::images(const StatusItemView &view)
{
    QList<QImage> lower = pixelsOf(view.iconImage->image());
    QList<QImage> upper = pixelsOf(view.statusImage->image());
    if (lower.isEmpty())
        return upper;
    if (!upper.isEmpty())
        std::ranges::for_each(lower, [&upper](QImage &image) { drawAbove(image, upper); });
    return lower;
}

QList<QImage> ViewRenderer::pixelsOf(const std::shared_ptr<Image> &image)
{
    if (image == nullptr)
        return {};
    const QRgb tint = tintOf(*image);
    const auto known = m_known.constFind(image->name());
    if (known != m_known.constEnd() && known->tint == tint)
        return known->images;
    return m_known.insert(image->name(), {tint, read(*image, tint)})->images;
}

} // namespace velq
