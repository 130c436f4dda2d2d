#pragma once

#include <QString>
#include <QtGlobal>

#include <memory>

namespace velq
{

class Image;

/// One kind of problem that a scanner checks, as its host shows it. Made and owned by the scanner,
/// for as long as that lives. Not guarded: written by the scanning thread, read by the host when no
/// scan runs.
class GerenalData
{
public:
    GerenalData() = default;
    GerenalData(const GerenalData &) = delete;
    GerenalData &operator=(const GerenalData &) = delete;
    /// Lets go of the title first, and then of the rest.
    virtual ~GerenalData() { m_title = QString(); }

    QString title() const { return m_title; }
    void setTitle(const QString &title) { m_title = title; }
    /// One sentence.
    QString des() const { return m_des; }
    void setDes(const QString &des) { m_des = des; }

    std::shared_ptr<Image> image() const { return m_image; }
    void setImage(const std::shared_ptr<Image> &image) { m_image = image; }
    /// For the selected item.
    std::shared_ptr<Image> selectImage() const { return m_selectImage; }
    void setSelectImage(const std::shared_ptr<Image> &image) { m_selectImage = image; }

    /// How many problems were found; 0 for none.
    virtual qint64 issue() const { return m_issue; }
    void setIssue(qint64 issue) { m_issue = issue; }

    /// Ignored in this scan only: every scan clears it.
    bool hasIgnore() const { return m_hasIgnore; }
    void setHasIgnore(bool hasIgnore) { m_hasIgnore = hasIgnore; }
    /// The host must not offer to ignore this item.
    bool noShowIgnore() const { return m_noShowIgnore; }
    void setNoShowIgnore(bool noShowIgnore) { m_noShowIgnore = noShowIgnore; }

    /// The key of the user defaults that holds the lasting choice to ignore this item. Every
    /// process with the same defaults shares the choice.
    QString ignoreKey() const { return m_ignoreKey; }
    void setIgnoreKey(const QString &key) { m_ignoreKey = key; }
    /// That choice; no while nobody has made it.
    bool ignore() const;
    /// Turns the choice round, whatever its name says. It is stored at once.
    void resetIgnore();

private:
    QString m_title;
    QString m_des;
    std::shared_ptr<Image> m_image;
    std::shared_ptr<Image> m_selectImage;
    QString m_ignoreKey;
    qint64 m_issue = 0;
    bool m_hasIgnore = false;
    bool m_noShowIgnore = false;
};

} // namespace velq
