#pragma once

#include "common/Image.h"

#include <QObject>

namespace velq
{

/// Shows one image, or nothing. Main thread.
class ImageView : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Null: nothing is shown.
    std::shared_ptr<Image> image() const { return m_image; }
    void setImage(const std::shared_ptr<Image> &image);

Q_SIGNALS:
    void imageChanged();

private:
    std::shared_ptr<Image> m_image;
};

} // namespace velq
