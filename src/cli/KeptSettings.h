#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace velq::cli
{

/// The settings of the network services at one moment, as far as a repair changes them and
/// `velq restore` puts them back: how a service gets its address, its name servers, its MTU.
class KeptSettings
{
public:
    /// Looks now; runs tools and waits for them. None of a system that does not keep any.
    static KeptSettings now();

    /// The services whose settings are others by now, in order. Looks as well.
    QStringList changedSince() const;

    /// How the person takes back what was changed since, as a line; empty where nothing was.
    QString wayBack() const;

private:
    QHash<QString, QString> m_texts; ///< what the tools say of each service
};

} // namespace velq::cli
