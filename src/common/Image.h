#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace velq
{

/// A named image of the main bundle: the files that show it at several sizes, and the template
/// mark. Holds no pixels; whoever draws it loads the files. Main thread, but for the look-up.
class Image
{
public:
    /// The image of that name: `NAME.png` and `NAME_SIZE.png` in the bundle's resources. Shared:
    /// every look-up of a name gives the same object. Null when there is no such file, and for the
    /// empty name. Any thread.
    static std::shared_ptr<Image> imageNamed(const QString &name);

    Image(QString name, QStringList files);

    QString name() const { return m_name; }
    /// Whole paths, at least one.
    QStringList files() const { return m_files; }

    /// A template is drawn by its shape alone, in the colour of the text around it.
    bool isTemplate() const { return m_template; }
    void setTemplate(bool isTemplate) { m_template = isTemplate; }

private:
    QString m_name;
    QStringList m_files;
    bool m_template = false;
};

} // namespace velq
