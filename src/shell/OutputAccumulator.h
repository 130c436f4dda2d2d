#pragma once

#include <QString>

#include <mutex>

namespace velq
{

/// The output of a running command, growing while it comes in. Any thread.
class OutputAccumulator
{
public:
    OutputAccumulator() { m_text.reserve(initialCapacity); }

    void append(const QString &text)
    {
        const std::scoped_lock lock(m_mutex);
        m_text += text;
    }

    /// What has come in so far.
    QString text() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_text;
    }

private:
    static constexpr qsizetype initialCapacity = 4096;

    mutable std::mutex m_mutex;
    QString m_text = QStringLiteral("");
};

} // namespace velq
