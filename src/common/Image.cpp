#include "common/Image.h"

#include "platform/Bundle.h"

#include <QDir>
#include <QHash>

#include <mutex>

namespace velq
{

namespace
{

QStringList filesOf(const QString &name)
{
    const QDir resources(Bundle::mainBundle().resourcePath());
    QStringList files;
    for (const QString &file :
         resources.entryList({name + QStringLiteral(".png"), name + QStringLiteral("_*.png")}))
        files.append(resources.filePath(file));
    return files;
}

} // namespace

std::shared_ptr<Image> Image::imageNamed(const QString &name)
{
    static std::mutex mutex;
    static QHash<QString, std::shared_ptr<Image>> shared;
    const std::scoped_lock lock(mutex);
    if (const auto known = shared.constFind(name); known != shared.constEnd())
        return *known;
    const QStringList files = name.isEmpty() ? QStringList() : filesOf(name);
    if (files.isEmpty())
        return nullptr;
    return *shared.insert(name, std::make_shared<Image>(name, files));
}

Image::Image(QString name, QStringList files)
    : m_name(std::move(name))
    , m_files(std::move(files))
{
}

} // namespace velq
