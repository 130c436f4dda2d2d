#pragma once

#include <QString>
#include <QVariantMap>

namespace velq
{

/// An application bundle: a folder `NAME.app/Contents` with the information dictionary
/// (`Info.plist`), the program (`MacOS/`), its resources (`Resources/`) and its helper programs
/// (`Helpers/`).
///
/// A value that reads its information dictionary once, when made. Any thread.
class Bundle
{
public:
    /// The bundle at `path` (the `.app` folder). A folder without `Contents` is its own bundle:
    /// resources and helpers lie beside the program.
    explicit Bundle(const QString &path);

    /// The bundle that the running program belongs to, found from the program's own file, symbolic
    /// links followed. Made on first use.
    static const Bundle &mainBundle();

    /// The running program's own file, symbolic links followed.
    static QString mainExecutablePath();
    /// The name that people know the running application by: the main bundle's
    /// "CFBundleDisplayName", else its "CFBundleName", else the program's file name.
    static QString runningApplicationName();

    /// The bundle of the program file at `executable`.
    static Bundle ofExecutable(const QString &executable);

    QString bundlePath() const;
    QString resourcePath() const;
    QString helperPath() const;
    /// The program, "CFBundleExecutable" in `MacOS/`, or the one that is called as the bundle where
    /// that key is absent; null when there is no such program.
    QString executablePath() const;

    /// The file or bundle NAME.TYPE in the resources; null when there is none.
    QString pathForResource(const QString &name, const QString &type) const;

    /// Empty when there is none.
    QVariantMap infoDictionary() const;
    /// The value of "CFBundleIdentifier"; null when there is none.
    QString bundleIdentifier() const;
    /// A string of the information dictionary, such as "CFBundleVersion"; null when there is none.
    QString textForInfoDictionaryKey(const QString &key) const;

private:
    QString m_path;
    QString m_contents;
    QVariantMap m_info;
};

} // namespace velq
