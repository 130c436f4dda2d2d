#include "platform/RootDaemon.h"

#include "platform/linux/BusHandle.h"
#include "platform/linux/rootdaemon/Contract.h"

#include <QXmlStreamReader>

#include <cstring>
#include <functional>
#include <string>
#include <systemd/sd-bus.h>
#include <vector>

namespace velq
{

namespace
{

using namespace std::chrono_literals;
using std::chrono::microseconds;

// For what only the bus, or a daemon that has nothing to do, has to answer; includes its start.
constexpr microseconds shortCall = 30s;
// A daemon that ends for want of work may do so between the question and the message.
constexpr int attempts = 3;

constexpr char busDriver[] = "org.freedesktop.DBus";

struct FreeCredentials {
    void operator()(sd_bus_creds *credentials) const noexcept { sd_bus_creds_unref(credentials); }
};
using Credentials = std::unique_ptr<sd_bus_creds, FreeCredentials>;

class Error
{
public:
    Error() = default;
    Error(const Error &) = delete;
    Error &operator=(const Error &) = delete;
    ~Error() { sd_bus_error_free(&m_error); }

    sd_bus_error *out() { return &m_error; }

    /// That the message has found nobody who would have looked into it.
    bool isUndelivered() const
    {
        return isNamed(SD_BUS_ERROR_SERVICE_UNKNOWN) || isNamed(SD_BUS_ERROR_NAME_HAS_NO_OWNER)
            || (m_error.name != nullptr
                && std::string_view(m_error.name).ends_with(".ShuttingDown"));
    }

    std::string description(int result) const
    {
        if (m_error.message != nullptr)
            return m_error.message;
        return m_error.name != nullptr ? m_error.name : std::strerror(-result);
    }

private:
    bool isNamed(const char *name) const { return sd_bus_error_has_name(&m_error, name) != 0; }

    sd_bus_error m_error = SD_BUS_ERROR_NULL;
};

void demand(int result)
{
    if (result < 0)
        throw RootDaemonError(std::strerror(-result));
}

// The bus would cut the text there, and root would run something else.
std::string withoutNul(const QString &text)
{
    if (text.contains(QChar::Null))
        throw RootDaemonError("A command must not hold a NUL character");
    return text.toStdString();
}

bool describesRunShell(const QString &introspection)
{
    QXmlStreamReader reader(introspection);
    QString interface;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QString name = reader.attributes().value(QStringLiteral("name")).toString();
        if (reader.name() == QStringLiteral("interface"))
            interface = name;
        else if (reader.name() == QStringLiteral("method")
                 && interface == QLatin1String(rootdaemon::interfaceName)
                 && name == QLatin1String(rootdaemon::methodName))
            return true;
    }
    return false;
}

QString textOf(sd_bus_message *reply)
{
    const char *text = nullptr;
    demand(sd_bus_message_read(reply, "s", &text));
    return QString::fromUtf8(text);
}

} // namespace

class RootDaemon::Connection
{
public:
    Connection()
        : m_bus(openSystemBus())
    {
    }

    /// Starts the daemon when it is not running. False when nobody has the name, or not root.
    bool findOwner()
    {
        if (m_bus == nullptr)
            return false;
        m_owner = nameOwner();
        if (m_owner.empty() && startService())
            m_owner = nameOwner();
        return !m_owner.empty() && isRoots(m_owner);
    }

    /// A message to the owner that was found, whoever has the name meanwhile.
    MessageHandle message(const char *interface, const char *method) const
    {
        sd_bus_message *message = nullptr;
        demand(sd_bus_message_new_method_call(m_bus.get(), &message, m_owner.c_str(),
                                              rootdaemon::objectPath, interface, method));
        return MessageHandle(message);
    }

    /// Throws RootDaemonError. A message that reached nobody is made and sent again.
    MessageHandle reply(const std::function<MessageHandle()> &make, microseconds patience)
    {
        for (int attempt = 1;; ++attempt) {
            const MessageHandle message = make();
            Error error;
            sd_bus_message *reply = nullptr;
            const int result =
                sd_bus_call(m_bus.get(), message.get(), static_cast<uint64_t>(patience.count()),
                            error.out(), &reply);
            if (result >= 0)
                return MessageHandle(reply);
            if (attempt == attempts || !error.isUndelivered() || !findOwner())
                throw RootDaemonError(error.description(result));
        }
    }

private:
    MessageHandle askBus(const char *method, const char *types, auto... values) const
    {
        sd_bus_message *created = nullptr;
        demand(sd_bus_message_new_method_call(m_bus.get(), &created, busDriver,
                                              "/org/freedesktop/DBus", busDriver, method));
        const MessageHandle message(created);
        demand(sd_bus_message_append(message.get(), types, values...));
        sd_bus_message *reply = nullptr;
        demand(sd_bus_call(m_bus.get(), message.get(), shortCall.count(), nullptr, &reply));
        return MessageHandle(reply);
    }

    bool startService() const
    try {
        askBus("StartServiceByName", "su", rootdaemon::busName, 0U);
        return true;
    } catch (const RootDaemonError &) {
        return false;
    }

    std::string nameOwner() const
    try {
        return textOf(askBus("GetNameOwner", "s", rootdaemon::busName).get()).toStdString();
    } catch (const RootDaemonError &) {
        return {};
    }

    bool isRoots(const std::string &owner) const
    {
        sd_bus_creds *asked = nullptr;
        if (sd_bus_get_name_creds(m_bus.get(), owner.c_str(), SD_BUS_CREDS_EUID, &asked) < 0)
            return false;
        const Credentials credentials(asked);
        uid_t uid = 0;
        return sd_bus_creds_get_euid(credentials.get(), &uid) >= 0 && uid == 0;
    }

    BusHandle m_bus;
    std::string m_owner;
};

std::unique_ptr<RootDaemon> RootDaemon::rootProxy()
{
    auto connection = std::make_unique<Connection>();
    if (!connection->findOwner())
        return nullptr;
    return std::unique_ptr<RootDaemon>(new RootDaemon(std::move(connection)));
}

RootDaemon::RootDaemon(std::unique_ptr<Connection> connection)
    : m_connection(std::move(connection))
{
}

RootDaemon::~RootDaemon() = default;

bool RootDaemon::respondsToRunShell()
try {
    const auto introspect = [this] {
        return m_connection->message("org.freedesktop.DBus.Introspectable", "Introspect");
    };
    return describesRunShell(textOf(m_connection->reply(introspect, shortCall).get()));
} catch (const RootDaemonError &) {
    return false;
}

QString RootDaemon::runShell(const QString &launchPath, const QStringList &arguments)
{
    const std::string path = withoutNul(launchPath);
    std::vector<std::string> words;
    for (const QString &argument : arguments)
        words.push_back(withoutNul(argument));
    const auto runShell = [&] {
        MessageHandle message =
            m_connection->message(rootdaemon::interfaceName, rootdaemon::methodName);
        demand(sd_bus_message_append(message.get(), "s", path.c_str()));
        demand(sd_bus_message_open_container(message.get(), SD_BUS_TYPE_ARRAY, "s"));
        for (const std::string &word : words)
            demand(sd_bus_message_append(message.get(), "s", word.c_str()));
        demand(sd_bus_message_close_container(message.get()));
        demand(sd_bus_message_set_allow_interactive_authorization(message.get(), 1));
        return message;
    };
    return textOf(m_connection->reply(runShell, rootdaemon::longestCall).get());
}

} // namespace velq
