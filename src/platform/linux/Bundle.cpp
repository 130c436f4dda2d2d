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
    static const Bundle bundle =
        ofExecutable(QFile::symLinkTarget(QStringLiteral("/proc/self/exe")));
    return bundle;
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
