#include "nettools/networkmanager/MessageText.h"
#include "nettools/networkmanager/Settings.h"
#include "nettools/networkmanager/Value.h"

#include <gtest/gtest.h>

#include <array>
#include <sys/socket.h>
#include <unistd.h>

namespace
{

using namespace velq::nettools;

// Messages belong to a connection; this one leads nowhere.
class MessageText : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, m_ends.data()), 0);
        ASSERT_GE(sd_bus_new(&m_bus), 0);
        ASSERT_GE(sd_bus_set_fd(m_bus, m_ends[0], m_ends[0]), 0);
        ASSERT_GE(sd_bus_start(m_bus), 0);
    }
    void TearDown() override
    {
        sd_bus_close_unref(m_bus);
        close(m_ends[1]);
    }

    Message empty() const
    {
        sd_bus_message *message = nullptr;
        EXPECT_GE(sd_bus_message_new_method_call(m_bus, &message, "a.b", "/", "a.b", "C"), 0);
        return Message(message);
    }

    static const Message &sealed(const Message &message)
    {
        EXPECT_GE(sd_bus_message_seal(message.get(), 1, 0), 0);
        return message;
    }

    Message profile() const
    {
        Message message = empty();
        appendSettings(message,
                       std::vector<Edit>{{"connection", "id", "a \\ line\nand another"},
                                         {"connection", "autoconnect", false},
                                         {"ipv4", "dns", std::vector<uint32_t>{1, 4294967295U}},
                                         {"ipv4", "route-metric", int64_t{-1}},
                                         {"ipv6", "dns", std::vector<Ipv6Bytes>{{0xfd, 1}}}});
        sealed(message);
        return message;
    }

private:
    sd_bus *m_bus = nullptr;
    std::array<int, 2> m_ends{};
};

TEST_F(MessageText, WhatIsWrittenIsReadBackTheSame)
{
    const Message original = profile();
    const std::string text = textOf(original);
    const Message copy = empty();
    ASSERT_TRUE(appendText(copy, text));
    EXPECT_EQ(textOf(sealed(copy)), text);
    EXPECT_STREQ(sd_bus_message_get_signature(copy.get(), 1), "a{sa{sv}}");
    sd_bus_message_rewind(copy.get(), 1);
    const Value settings = Value::read(copy.get());
    EXPECT_EQ(settings["connection"]["id"].text(), "a \\ line\nand another");
    EXPECT_EQ(settings["ipv4"]["route-metric"].number(0), -1);
    EXPECT_EQ(settings["ipv4"]["dns"].list()[1].number(0), 4294967295);
}

TEST_F(MessageText, ATextThatIsNotWholeIsRefused)
{
    const std::string text = textOf(profile());
    for (size_t size = 0; size < text.size(); ++size)
        EXPECT_FALSE(appendText(empty(), text.substr(0, size))) << size;
}

TEST_F(MessageText, ATextOfOtherThingsIsRefused)
{
    for (const char *text : {"\n", "x\n", ")\n", "u -1\n", "u 1x\n", "y 256\n", "s a\\x\n",
                             "(a{sa{sv}}\n)\n)\n", "z 1\n", "(zz\n)\n", "s\n"})
        EXPECT_FALSE(appendText(empty(), text)) << text;
    std::string deep;
    for (int i = 0; i < 1000; ++i)
        deep += "(vv\n";
    EXPECT_FALSE(appendText(empty(), deep));
}

TEST_F(MessageText, AnEditChangesItsEntryAndNothingElse)
{
    const Message edited = empty();
    appendEdited(edited, profile(),
                 std::vector<Edit>{{"ipv4", "dns", {}},
                                   {"ipv4", "method", "auto"},
                                   {"connection", "autoconnect", true},
                                   {"802-3-ethernet", "mtu", uint32_t{1400}},
                                   {"802-11-wireless", "mtu", {}}});
    sealed(edited);
    const Value settings = Value::read(edited.get());
    EXPECT_FALSE(settings["ipv4"]["dns"].isSet());
    EXPECT_EQ(settings["ipv4"]["method"].text(), "auto");
    EXPECT_EQ(settings["ipv4"]["route-metric"].number(0), -1);
    EXPECT_TRUE(settings["connection"]["autoconnect"].truth(false));
    EXPECT_EQ(settings["connection"]["id"].text(), "a \\ line\nand another");
    EXPECT_EQ(settings["802-3-ethernet"]["mtu"].number(0), 1400);
    EXPECT_FALSE(settings["802-11-wireless"].isSet());
    EXPECT_EQ(settings["ipv6"]["dns"].list().size(), 1U);
}

TEST_F(MessageText, WithoutAnEditNothingChanges)
{
    const Message original = profile();
    const Message same = empty();
    appendEdited(same, original, {});
    EXPECT_EQ(textOf(sealed(same)), textOf(original));
}

} // namespace
