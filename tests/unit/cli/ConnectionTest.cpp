#include "cli/Connection.h"

#include <gtest/gtest.h>

namespace
{

using namespace velq::cli;

QByteArray json(const Connection &connection)
{
    return connection.report(QString()).json.toJson(QJsonDocument::Compact);
}

TEST(Connection, ThereIsOneAndItsInterfaceIsKnown)
{
    const Connection connection{true, QStringLiteral("lan0")};
    const Report report = connection.report(QStringLiteral("Connected"));
    EXPECT_EQ(report.text, QStringLiteral("Connected, by lan0.\n"));
    EXPECT_EQ(report.status, Fine);
    EXPECT_EQ(json(connection), R"({"connected":true,"interface":"lan0"})");
}

TEST(Connection, AnInterfaceThatIsNotKnownIsNotTold)
{
    const Connection connection{true, {}};
    EXPECT_EQ(connection.report(QStringLiteral("Connected")).text, QStringLiteral("Connected.\n"));
    EXPECT_EQ(connection.report(QString()).status, Fine);
    EXPECT_EQ(json(connection), R"({"connected":true,"interface":null})");
}

TEST(Connection, ThereIsNone)
{
    EXPECT_EQ(Connection().report(QStringLiteral("Down")).text, QStringLiteral("Down.\n"));
    EXPECT_EQ(Connection().report(QString()).status, Found);
    EXPECT_EQ(json(Connection()), R"({"connected":false,"interface":null})");
}

TEST(Connection, ANameDoesNothingToTheTerminalAndIsWholeForPrograms)
{
    const Connection connection{true, QStringLiteral("a\n\x1b[2J")};
    EXPECT_EQ(connection.report(QStringLiteral("Up")).text, QStringLiteral("Up, by a  [2J.\n"));
    EXPECT_EQ(json(connection), R"({"connected":true,"interface":"a\n\u001b[2J"})");
}

} // namespace
