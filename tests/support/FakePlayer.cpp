#include "support/FakePlayer.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QDBusVirtualObject>

namespace {

class Server : public QDBusVirtualObject {
public:
    explicit Server(FakePlayer& player)
        : m_player(player)
    {
    }
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        return m_player.handle(message, connection);
    }

private:
    FakePlayer& m_player;
};

std::atomic<int> gConnections = 0;

} // namespace

FakePlayer::FakePlayer(const QString& busName)
    : m_busName(busName)
    , m_connectionName(QStringLiteral("fake-player-%1").arg(++gConnections))
{
    m_server = std::make_unique<Server>(*this);
    QDBusConnection bus =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName);
    // Registering gives the object a child: move them together afterwards.
    bus.registerVirtualObject(QStringLiteral("/"), static_cast<Server*>(m_server.get()),
                              QDBusConnection::SubPath);
    m_thread.start();
    m_server->moveToThread(&m_thread);
    bus.registerService(m_busName);
}

FakePlayer::~FakePlayer()
{
    {
        QDBusConnection bus(m_connectionName);
        bus.unregisterService(m_busName);
        bus.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
    }
    QDBusConnection::disconnectFromBus(m_connectionName);
    m_thread.quit();
    m_thread.wait();
}

void FakePlayer::setReply(const QString& path, const QString& property,
                          const QVariantList& arguments)
{
    std::lock_guard lock(m_mutex);
    m_replies.insert(path + u' ' + property, arguments);
}

void FakePlayer::setProperty(const QString& path, const QString& property, const QVariant& value)
{
    setReply(path, property, {QVariant::fromValue(QDBusVariant(value))});
}

bool FakePlayer::handle(const QDBusMessage& message, const QDBusConnection& connection)
{
    ++m_calls;
    if (m_hung)
        return true;
    const QVariantList args = message.arguments();
    if (message.interface() == QLatin1String("org.freedesktop.DBus.Properties") &&
        message.member() == QLatin1String("Get") && args.size() == 2) {
        std::lock_guard lock(m_mutex);
        const auto it = m_replies.constFind(message.path() + u' ' + args[1].toString());
        if (it != m_replies.constEnd()) {
            connection.send(message.createReply(*it));
            return true;
        }
        connection.send(
            message.createErrorReply(QStringLiteral("org.freedesktop.DBus.Error.UnknownProperty"),
                                     QStringLiteral("no such property")));
        return true;
    }
    connection.send(message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no")));
    return true;
}
