#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>

#include <memory>

namespace velq
{

/// Settings of a user, kept by domain in property lists that outlast the program and that every
/// process of the user shares. Any thread.
///
/// A value set here is written at once, into its key alone: what other processes set meanwhile
/// stays. Where it cannot be written (a full disk, a folder without rights) it holds in this object
/// all the same, and the next set or synchronize() tries again. Reading sees what other processes
/// wrote.
class UserDefaults
{
public:
    /// Those of the running application: its domain is the main bundle's identifier, or without one
    /// the program's name.
    static UserDefaults &standardUserDefaults();

    /// Makes the domain the standard one: for a program that shares the settings of an application
    /// in whose bundle it does not lie. Before the first use of the standard ones.
    static void setStandardDomain(const QString &domain);

    /// Those of any domain, such as "com.zelmor.Velq": a name, no path.
    explicit UserDefaults(const QString &domain);
    UserDefaults(const UserDefaults &) = delete;
    UserDefaults &operator=(const UserDefaults &) = delete;
    ~UserDefaults();

    /// The value of the key; invalid when there is none.
    QVariant objectForKey(const QString &key) const;
    /// What stands there read as that kind (PropertyValue.h): null, false or 0 when there is none,
    /// or something else altogether.
    QString stringForKey(const QString &key) const;
    bool boolForKey(const QString &key) const;
    qint64 integerForKey(const QString &key) const;
    double doubleForKey(const QString &key) const;
    /// Invalid when there is none or it is no date.
    QDateTime dateForKey(const QString &key) const;

    /// Null removes the key; a value that no property list can hold changes nothing.
    void setObject(const QVariant &value, const QString &key);
    void setBool(bool value, const QString &key);
    void removeObjectForKey(const QString &key);

    /// Writes what could not be written before. Whether everything set here is in the file.
    bool synchronize();

private:
    class Store;
    std::unique_ptr<Store> m_store;
};

} // namespace velq
