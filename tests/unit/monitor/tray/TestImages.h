#pragma once

#include "common/Image.h"

#include <QColor>
#include <QImage>
#include <QTemporaryDir>

namespace velq
{

/// Images in files, filled with one colour, that last as long as this.
class TestImages
{
public:
    std::shared_ptr<Image> make(const QString &name, QColor color, const QList<int> &sizes)
    {
        QStringList files;
        for (const int size : sizes) {
            QImage pixels(size, size, QImage::Format_ARGB32);
            pixels.fill(color);
            files.append(m_folder.filePath(name + QString::number(size) + QStringLiteral(".png")));
            pixels.save(files.last());
        }
        return std::make_shared<Image>(name, files);
    }

private:
    QTemporaryDir m_folder;
};

} // namespace velq
