#include "monitor/ImageView.h"

namespace velq
{

void ImageView::setImage(const std::shared_ptr<Image> &image)
{
    if (m_image == image)
        return;
    m_image = image;
    Q_EMIT imageChanged();
}

} // namespace velq
