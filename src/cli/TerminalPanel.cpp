#include "cli/TerminalPanel.h"

#include "cli/Interruption.h"
#include "cli/Progress.h"
#include "common/Log.h"
#include "common/NSAlert_Addition.h"
#include "platform/StandardError.h"

#include <QEventLoop>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace velq::cli
{

namespace
{

// Without a line feed after it: the answer comes there.
void prompt(const NSAlert_Addition &alert)
{
    StandardError::write(
        QStringLiteral("Which one, 1 to %1? [1] ").arg(alert.buttons().size()).toUtf8());
}

void show(const NSAlert_Addition &alert)
{
    log(alert.message());
    log(alert.description());
    for (qsizetype i = 0; i < alert.buttons().size(); ++i)
        log(QStringLiteral("  %1  %2").arg(i + 1).arg(alert.buttons()[i].title));
}

void answerUnasked(NSAlert_Addition &alert, bool aloud)
{
    const NSAlert_Addition::Button first = alert.buttons().first();
    if (aloud) {
        log(alert.message());
        log(alert.description());
        log(QStringLiteral("Nobody can be asked; taken: %1").arg(first.title));
    }
    alert.buttonPressed(first.tag);
}

} // namespace

TerminalPanel::TerminalPanel(Audience audience, Interruption &interruption, Progress &progress)
    : m_audience(audience)
    , m_interruption(interruption)
    , m_progress(progress)
{
}

void TerminalPanel::runModal(NSAlert_Addition &alert)
{
    m_progress.hide();
    if (canBeAnswered())
        ask(alert);
    else
        answerUnasked(alert, m_audience == Audience::Person);
    m_progress.show();
}

void TerminalPanel::closeWindow()
{
}

void TerminalPanel::stopModal()
{
    if (m_loop != nullptr)
        m_loop->quit();
}

bool TerminalPanel::canBeAnswered() const
{
    return m_audience == Audience::Person && isatty(STDIN_FILENO) == 1
        && StandardError::isTerminal() && tcgetpgrp(STDIN_FILENO) == getpgrp();
}

void TerminalPanel::ask(NSAlert_Addition &alert)
{
    const Interruption::Scope nothingToWaitFor(m_interruption, [] { return false; });
    // What was typed before is no answer to this.
    (void)tcflush(STDIN_FILENO, TCIFLUSH);
    m_typed.clear();
    show(alert);
    prompt(alert);
    const QSocketNotifier notifier(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, [&] { readMore(alert); });
    QEventLoop loop;
    m_loop = &loop;
    loop.exec();
    m_loop = nullptr;
}

void TerminalPanel::readMore(NSAlert_Addition &alert)
{
    std::array<char, 256> bytes{};
    const ssize_t length = read(STDIN_FILENO, bytes.data(), bytes.size());
    if (length < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (length <= 0) {
        log(QString());
        take(alert, {});
        return;
    }
    m_typed.append(bytes.data(), static_cast<qsizetype>(length));
    const qsizetype end = m_typed.indexOf('\n');
    if (end >= 0)
        take(alert, std::exchange(m_typed, {}).first(end));
}

void TerminalPanel::take(NSAlert_Addition &alert, const QByteArray &answer)
{
    const QByteArray word = answer.trimmed();
    const qsizetype number = word.isEmpty() ? 1 : word.toLongLong();
    if (number >= 1 && number <= alert.buttons().size())
        alert.buttonPressed(alert.buttons()[number - 1].tag);
    else
        prompt(alert);
}

} // namespace velq::cli
