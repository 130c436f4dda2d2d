#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QTimer>

#include <memory>

namespace velq::cli
{

/// Tells the person on standard error what is being done: a line when it begins, and on a terminal
/// how long it has lasted, until it is done.
class Progress
{
public:
    /// Any thread. A quiet one says nothing.
    explicit Progress(bool quiet);
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;
    ~Progress();

    /// `what` as a line. Any thread, as the next one; the main thread must run its event loop.
    void begin(const QString &what);
    void end();

    /// Something else writes to the terminal meanwhile. Main thread.
    void hide();
    void show();

private:
    void draw();

    const bool m_quiet;
    const bool m_counts;
    QElapsedTimer m_begun;
    std::unique_ptr<QTimer> m_timer;
    qsizetype m_drawn = 0;
};

} // namespace velq::cli
