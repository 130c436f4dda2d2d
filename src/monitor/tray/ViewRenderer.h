#pragma once

#include <QHash>
#include <QImage>
#include <QList>
#include <QString>

#include <memory>

namespace velq
{

class Image;
struct StatusItemView;

/// Turns the view of a status item into pixels. Keeps what it has read: an animation that swaps two
/// images reads each file once. Main thread, with a QGuiApplication.
class ViewRenderer
{
public:
    /// The view's two images, one above the other, at every size of the lower one that is there,
    /// smallest first. Empty when the view shows nothing.
    QList<QImage> images(const StatusItemView &view);

private:
    struct Pixels {
        QRgb tint = 0;
        QList<QImage> images;
    };

    QList<QImage> pixelsOf(const std::shared_ptr<Image> &image);

    QHash<QString, Pixels> m_known;
};

} // namespace velq
