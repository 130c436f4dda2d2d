#include "platform/Bundle.h"

#include "platform/PropertyList.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace velq
{

Bundle::Bundle(const QString &path)
    : m_path(QDir::cleanPath(path))
    , m_contents(m_path + QStringLiteral("/Contents"))
{
    m_info = PropertyList::dictionaryFromFile(m_contents + QStringLiteral("/Info.plist"))
                 .value_or(QVariantMap());
}

const Bundle &Bundle::mainBundle()
{
    static const Bundle bundle = ofExecutable(mainExecutablePath());
    return bundle;
}

QString Bundle::mainExecutablePath()
{
    return QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
}

QString Bundle::runningApplicationName()
{
    for (const auto &key :
         {QStringLiteral("CFBundleDisplayName"), QStringLiteral("CFBundleName")}) {
        QString name = mainBundle().textForInfoDictionaryKey(key);
        if (!name.isEmpty())
            return name;
    }
    return QFileInfo(mainExecutablePath()).fileName();
}

Bundle Bundle::ofExecutable(const QString &executable)
{
    const QString folder = QFileInfo(executable).path();
    const QString suffix = QStringLiteral("/Contents/MacOS");
    return Bundle(folder.endsWith(suffix) ? folder.chopped(suffix.size()) : folder);
}

QString Bundle::bundlePath() const
{
    return m_path;
}

QString Bundle::resourcePath() const
{
    return QFileInfo(m_contents).isDir() ? m_contents + QStringLiteral("/Resources") : m_path;
}

QString Bundle::helperPath() const
{
    return QFileInfo(m_contents).isDir() ? m_contents + QStringLiteral("/Helpers") : m_path;
}

QString Bundle::executablePath() const
{
    const QString name = textForInfoDictionaryKey(QStringLiteral("CFBundleExecutable"));
    const QFileInfo program(m_contents + QStringLiteral("/MacOS/")
                            + (name.isEmpty() ? QFileInfo(m_path).completeBaseName() : name));
    return program.isFile() && program.isExecutable() ? program.filePath() : QString();
}

QString Bundle::pathForResource(const QString &name, const QString &type) const
{
    const QString path = resourcePath() + u'/' + name + u'.' + type;
    return QFileInfo::exists(path) ? path : QString();
}

QVariantMap Bundle::infoDictionary() const
{
    return m_info;
}

QString Bundle::bundleIdentifier() const
{
    return textForInfoDictionaryKey(QStringLiteral("CFBundleIdentifier"));
}

QString Bundle::textForInfoDictionaryKey(const QString &key) const
{
    const QVariant value = m_info.value(key);
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

} // namespace velq
