#include "core/platform/DirectPropertyRead.h"

#include "core/platform/Workspace.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QHash>

#include <systemd/sd-bus.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>

namespace DirectPropertyRead {
namespace {

// sd-bus connections belong to one thread each.
class ThreadConnection {
public:
    ThreadConnection() = default;
    ThreadConnection(const ThreadConnection&) = delete;
    ThreadConnection& operator=(const ThreadConnection&) = delete;
    ~ThreadConnection() { close(); }

    sd_bus* get()
    {
        if (!m_bus && !m_failed)
            open();
        return m_bus;
    }
    void close()
    {
        if (m_bus)
            sd_bus_flush_close_unref(m_bus);
        m_bus = nullptr;
    }

private:
    void open()
    {
        // Only the bus Qt's session connection uses too: the one the environment names.
        const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
        sd_bus* bus = nullptr;
        if (!address || !*address || sd_bus_new(&bus) < 0) {
            m_failed = true;
            return;
        }
        if (sd_bus_set_address(bus, address) < 0 || sd_bus_set_bus_client(bus, 1) < 0 ||
            sd_bus_start(bus) < 0) {
            sd_bus_unref(bus);
            m_failed = true;
            return;
        }
        m_bus = bus;
    }

    sd_bus* m_bus = nullptr;
    bool m_failed = false;
};

thread_local ThreadConnection t_connection;

// Well-known name -> the unique name of the other process owning it.
std::mutex g_mutex;
QHash<QString, QByteArray> g_owners;

void watchOwnerChanges()
{
    static std::once_flag once;
    std::call_once(once, [] {
        Workspace& workspace = Workspace::sharedWorkspace();
        QObject::connect(&workspace, &Workspace::ownerChanged, &workspace, &forgetOwner);
    });
}

bool isConnectionLost(int error)
{
    return error == -ENOTCONN || error == -ECONNRESET || error == -EPIPE || error == -ESHUTDOWN;
}

struct Reply {
    int error = 0;
    sd_bus_message* message = nullptr;
    sd_bus_error busError{}; // SD_BUS_ERROR_NULL, without its C compound literal
    Reply() = default;
    Reply(const Reply&) = delete;
    Reply& operator=(const Reply&) = delete;
    ~Reply()
    {
        sd_bus_message_unref(message);
        sd_bus_error_free(&busError);
    }
    bool errorNamed(const char* name) const
    {
        return busError.name && std::strcmp(busError.name, name) == 0;
    }
};

// One blocking call; arguments are strings only.
void call(sd_bus* bus, const char* destination, const char* path, const char* interface,
          const char* member, const char* first, const char* second, int timeoutMs, Reply& reply)
{
    sd_bus_message* message = nullptr;
    reply.error =
        sd_bus_message_new_method_call(bus, &message, destination, path, interface, member);
    if (reply.error >= 0)
        reply.error = second ? sd_bus_message_append(message, "ss", first, second)
                             : sd_bus_message_append(message, "s", first);
    if (reply.error >= 0)
        reply.error = sd_bus_call(bus, message, std::uint64_t(timeoutMs) * 1000, &reply.busError,
                                  &reply.message);
    sd_bus_message_unref(message);
    // Anything else that arrives (the bus's NameAcquired, a stray call to this connection) is
    // queued while a call waits: answer or drop it now, or the queue fills over a long day.
    while (sd_bus_process(bus, nullptr) > 0) {
    }
}

// The owner's unique name, empty when this process owns the name; false when the name has no
// owner or the lookup fails.
bool lookUpOwner(sd_bus* bus, const QString& busName, int timeoutMs, QByteArray& owner)
{
    {
        std::lock_guard lock(g_mutex);
        const auto found = g_owners.constFind(busName);
        if (found != g_owners.constEnd()) {
            owner = *found;
            return true;
        }
    }
    Reply reply;
    call(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
         "GetNameOwner", busName.toUtf8().constData(), nullptr, timeoutMs, reply);
    const char* unique = nullptr;
    if (reply.error < 0 || sd_bus_message_read(reply.message, "s", &unique) < 0 || !unique)
        return false;
    owner = unique;
    // A name of this process's own is not remembered: its reads go through Qt, and the name
    // may be handed to another process before the change is delivered here.
    if (owner == QDBusConnection::sessionBus().baseService().toUtf8()) {
        owner.clear();
        return true;
    }
    std::lock_guard lock(g_mutex);
    g_owners.insert(busName, owner);
    return true;
}

// Reads the value inside the reply's variant, as Qt's D-Bus module types it.
Result readValue(sd_bus_message* message)
{
    const char* signature = sd_bus_message_get_signature(message, 1);
    if (!signature || std::strcmp(signature, "v") != 0)
        return {Outcome::Failed, {}};
    char type = 0;
    const char* contents = nullptr;
    // The reply's variant and up to three more inside it, as the Qt path unwraps them.
    for (int depth = 0; depth < 4; ++depth) {
        if (sd_bus_message_peek_type(message, &type, &contents) <= 0 || type != 'v')
            break;
        if (sd_bus_message_enter_container(message, 'v', contents) <= 0)
            return {Outcome::Failed, {}};
    }
    if (sd_bus_message_peek_type(message, &type, &contents) <= 0)
        return {Outcome::Failed, {}};
    union {
        std::uint8_t y;
        int b;
        std::int16_t n;
        std::uint16_t q;
        std::int32_t i;
        std::uint32_t u;
        std::int64_t x;
        std::uint64_t t;
        double d;
        const char* s;
    } value{};
    if (type == 'v')
        return {Outcome::Failed, {}}; // nested deeper than any player's answer
    if (!std::strchr("ybnqiuxtdsog", type))
        return {Outcome::Unavailable, {}}; // containers and file descriptors: Qt's path
    if (sd_bus_message_read_basic(message, type, &value) < 0)
        return {Outcome::Failed, {}};
    switch (type) {
    case 'y':
        return {Outcome::Value, QVariant::fromValue(uchar(value.y))};
    case 'b':
        return {Outcome::Value, QVariant(value.b != 0)};
    case 'n':
        return {Outcome::Value, QVariant::fromValue(short(value.n))};
    case 'q':
        return {Outcome::Value, QVariant::fromValue(ushort(value.q))};
    case 'i':
        return {Outcome::Value, QVariant(int(value.i))};
    case 'u':
        return {Outcome::Value, QVariant(uint(value.u))};
    case 'x':
        return {Outcome::Value, QVariant(qlonglong(value.x))};
    case 't':
        return {Outcome::Value, QVariant(qulonglong(value.t))};
    case 'd':
        return {Outcome::Value, QVariant(value.d)};
    case 's':
        return {Outcome::Value, QVariant(QString::fromUtf8(value.s))};
    case 'o':
        return {Outcome::Value, QVariant::fromValue(QDBusObjectPath(QString::fromUtf8(value.s)))};
    default:
        return {Outcome::Value, QVariant::fromValue(QDBusSignature(QString::fromUtf8(value.s)))};
    }
}

} // namespace

void forgetOwner(const QString& busName)
{
    std::lock_guard lock(g_mutex);
    g_owners.remove(busName);
}

Result property(const QString& busName, const QString& path, const QString& interface,
                const char* name, int timeoutMs)
{
    sd_bus* bus = t_connection.get();
    if (!bus)
        return {};
    watchOwnerChanges();
    const QByteArray pathText = path.toUtf8();
    const QByteArray interfaceText = interface.toUtf8();
    // A remembered owner may have left the bus since: look it up afresh once.
    for (int attempt = 0; attempt < 2; ++attempt) {
        QByteArray owner;
        if (!lookUpOwner(bus, busName, timeoutMs, owner))
            return {Outcome::Failed, {}};
        if (owner.isEmpty())
            return {};
        Reply reply;
        call(bus, owner.constData(), pathText.constData(), "org.freedesktop.DBus.Properties", "Get",
             interfaceText.constData(), name, timeoutMs, reply);
        if (reply.error >= 0)
            return readValue(reply.message);
        if (reply.error == -ETIMEDOUT || reply.errorNamed(SD_BUS_ERROR_NO_REPLY))
            return {Outcome::TimedOut, {}};
        if (isConnectionLost(reply.error)) {
            t_connection.close();
            return {};
        }
        if (!reply.errorNamed(SD_BUS_ERROR_SERVICE_UNKNOWN) &&
            !reply.errorNamed(SD_BUS_ERROR_NAME_HAS_NO_OWNER))
            return {Outcome::Failed, {}};
        forgetOwner(busName);
    }
    return {Outcome::Failed, {}};
}

} // namespace DirectPropertyRead
