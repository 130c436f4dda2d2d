#pragma once

#include "common/AlertPanel.h"

#include <QByteArray>

class QEventLoop;

namespace velq::cli
{

class Interruption;
class Progress;

/// Shows alerts on standard error and has them answered on standard input: by a button's number,
/// or by Return, or the end of the input, for the first one. Main thread, whose event loop goes on
/// meanwhile; an interruption ends the program then, with nothing answered.
///
/// Where nobody can answer (that is, standard input and error are not both the terminal, or the
/// program is in its background) it is answered by the first button, and tells so.
class TerminalPanel : public AlertPanel
{
public:
    enum class Audience {
        Person,
        Program, ///< nobody can answer, and nothing is told
    };

    /// Both must outlive the panel.
    TerminalPanel(Audience audience, Interruption &interruption, Progress &progress);

    void runModal(NSAlert_Addition &alert) override;
    void closeWindow() override;
    void stopModal() override;

private:
    bool canBeAnswered() const;
    void ask(NSAlert_Addition &alert);
    void readMore(NSAlert_Addition &alert);
    void take(NSAlert_Addition &alert, const QByteArray &answer);

    const Audience m_audience;
    Interruption &m_interruption;
    Progress &m_progress;
    QEventLoop *m_loop = nullptr; ///< while it asks
    QByteArray m_typed;
};

} // namespace velq::cli
