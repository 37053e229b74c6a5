#include "core/app/PlayerSeek.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QPointer>
#include <QTimer>

namespace playerseek {

void send(const QDBusMessage& call, QObject* context, Done done)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || call.service().isEmpty()) {
        refuse(context, std::move(done));
        return;
    }
    // The bus library enforces the time-out: a player that never answers yields an error.
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, kTimeoutMs), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                     [watcher, done = std::move(done)] {
                         watcher->deleteLater();
                         done(!watcher->isError());
                     });
}

QDBusMessage setDouble(const QString& busName, const QString& path, const QString& interface,
                       const QString& property, double value)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        busName, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"));
    call << interface << property << QVariant::fromValue(QDBusVariant(value));
    return call;
}

void refuse(QObject* context, Done done)
{
    QTimer::singleShot(0, context, [done = std::move(done)] { done(false); });
}

} // namespace playerseek
