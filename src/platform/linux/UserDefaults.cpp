#include "platform/UserDefaults.h"

#include "platform/Bundle.h"
#include "platform/PropertyList.h"
#include "platform/PropertyValue.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>

#include <sys/stat.h>

namespace velq
{

namespace
{

// Tells one state of a file from another: each is a new file, put in the place of the one before.
struct FileState {
    dev_t device = 0;
    ino_t file = 0;
    off_t size = -1;
    time_t seconds = 0;
    long nanoseconds = 0;

    bool operator==(const FileState &) const = default;
};

FileState stateOf(const QString &path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    return {status.st_dev, status.st_ino, status.st_size, status.st_ctim.tv_sec,
            status.st_ctim.tv_nsec};
}

QString &chosenDomain()
{
    static QString domain;
    return domain;
}

QString standardDomain()
{
    if (!chosenDomain().isNull())
        return chosenDomain();
    const QString identifier = Bundle::mainBundle().bundleIdentifier();
    return identifier.isNull() ? QFileInfo(Bundle::mainExecutablePath()).fileName() : identifier;
}

} // namespace

class UserDefaults::Store
{
public:
    explicit Store(const QString &domain)
        : m_path(QDir::homePath() + QStringLiteral("/Library/Preferences/") + domain
                 + QStringLiteral(".plist"))
    {
    }

    QVariant value(const QString &key)
    {
        const QMutexLocker locker(&m_mutex);
        const auto unwritten = m_unwritten.constFind(key);
        if (unwritten != m_unwritten.cend())
            return *unwritten;
        readIfChanged();
        return m_read.value(key);
    }

    void set(const QString &key, const QVariant &value)
    {
        const QMutexLocker locker(&m_mutex);
        if (!PropertyList::canHold({{key, value}}))
            return;
        m_unwritten.insert(key, value);
        (void)write();
    }

    bool synchronize()
    {
        const QMutexLocker locker(&m_mutex);
        return write();
    }

private:
    bool write()
    {
        if (m_unwritten.isEmpty())
            return true;
        if (!PropertyList::changeDictionary(m_unwritten, m_path))
            return false;
        m_unwritten.clear();
        return true;
    }

    void readIfChanged()
    {
        const FileState state = stateOf(m_path);
        if (state == m_state)
            return;
        // Taken before the reading: a change that comes between is seen the next time.
        m_state = state;
        m_read = PropertyList::dictionaryFromFile(m_path).value_or(QVariantMap());
    }

    const QString m_path;
    QMutex m_mutex;
    FileState m_state;
    QVariantMap m_read;
    QVariantMap m_unwritten;
};

UserDefaults &UserDefaults::standardUserDefaults()
{
    static UserDefaults defaults(standardDomain());
    return defaults;
}

void UserDefaults::setStandardDomain(const QString &domain)
{
    chosenDomain() = domain;
}

UserDefaults::UserDefaults(const QString &domain)
    : m_store(std::make_unique<Store>(domain))
{
}

UserDefaults::~UserDefaults() = default;

QVariant UserDefaults::objectForKey(const QString &key) const
{
    return m_store->value(key);
}

QString UserDefaults::stringForKey(const QString &key) const
{
    return textOfValue(objectForKey(key));
}

bool UserDefaults::boolForKey(const QString &key) const
{
    return booleanOfValue(objectForKey(key));
}

qint64 UserDefaults::integerForKey(const QString &key) const
{
    return integerOfValue(objectForKey(key));
}

double UserDefaults::doubleForKey(const QString &key) const
{
    return realOfValue(objectForKey(key));
}

QDateTime UserDefaults::dateForKey(const QString &key) const
{
    const QVariant value = objectForKey(key);
    return value.typeId() == QMetaType::QDateTime ? value.toDateTime() : QDateTime();
}

void UserDefaults::setObject(const QVariant &value, const QString &key)
{
    m_store->set(key, value);
}

void UserDefaults::setBool(bool value, const QString &key)
{
    m_store->set(key, value);
}

void UserDefaults::removeObjectForKey(const QString &key)
{
    m_store->set(key, QVariant());
}

bool UserDefaults::synchronize()
{
    return m_store->synchronize();
}

} // namespace velq
