#include "support/FakeRootDaemon.h"

#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <thread>

namespace velq::testing
{

namespace
{

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write what the fake root daemon reads");
}

std::vector<std::string> words(const PrivateBus &bus, const FakeTools &tools)
{
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", QByteArray::fromStdString(bus.address()));
    return {"log", QFileInfo(tools.path(QStringLiteral("log"))).path().toStdString()};
}

} // namespace

FakeRootDaemon::FakeRootDaemon(const FakeTools &tools)
    : m_tools(tools)
    , m_daemon(VELQ_FAKE_ROOT_DAEMON, words(m_bus, tools))
{
    EXPECT_TRUE(m_daemon.readAvailable().starts_with("ready"));
}

FakeRootDaemon::~FakeRootDaemon()
{
    kill(m_daemon.pid(), SIGKILL);
}

void FakeRootDaemon::setAnswer(const QByteArray &output) const
{
    writeFile(m_tools.path(QStringLiteral("answer")), output);
}

void FakeRootDaemon::during(const QByteArray &line, const std::function<void()> &run,
                            const std::function<void()> &meanwhile) const
{
    const QString hold = m_tools.path(QStringLiteral("hold"));
    writeFile(hold, {});
    std::jthread other([&] {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(40);
        while (!m_tools.log().contains(line)) {
            if (std::chrono::steady_clock::now() > deadline) {
                ADD_FAILURE() << "never run: " << line.toStdString();
                break;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        meanwhile();
        QFile::remove(hold);
    });
    run();
}

} // namespace velq::testing
