#include "core/platform/DistributedNotificationCenter.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>

DistributedNotificationCenter& DistributedNotificationCenter::defaultCenter()
{
    static DistributedNotificationCenter* center =
        new DistributedNotificationCenter; // process-long
    return *center;
}

DistributedNotificationCenter::DistributedNotificationCenter()
{
    // Any process may emit Post with any arguments: only the exact signature is a
    // notification, and the message is taken apart here rather than by QtDBus's conversions.
    // QtDBus connects signals by signature string; there is no member-pointer form.
    m_connected = QDBusConnection::sessionBus().connect(
        QString(), QLatin1String(kPath), QLatin1String(kInterface), QStringLiteral("Post"),
        QLatin1String(kSignature), this, SLOT(onPost(QDBusMessage)));
}

int DistributedNotificationCenter::addObserver(const QString& name, const QString& sender,
                                               Handler handler)
{
    const int token = m_nextToken++;
    m_observers.emplace(token, Observer{name, sender, std::move(handler)});
    return token;
}

void DistributedNotificationCenter::removeObserver(int token)
{
    m_observers.erase(token);
}

bool DistributedNotificationCenter::post(const QString& name, const QString& sender,
                                         const QVariantMap& userInfo)
{
    QDBusMessage signal = QDBusMessage::createSignal(
        QLatin1String(kPath), QLatin1String(kInterface), QStringLiteral("Post"));
    signal << name << sender << userInfo;
    return QDBusConnection::sessionBus().send(signal);
}

void DistributedNotificationCenter::onPost(const QDBusMessage& message)
{
    const QList<QVariant> arguments = message.arguments();
    if (message.signature() != QLatin1String(kSignature) || arguments.size() != 3 ||
        arguments[2].metaType() != QMetaType::fromType<QDBusArgument>())
        return; // noise
    QVariantMap userInfo;
    const QDBusArgument info = arguments[2].value<QDBusArgument>();
    info >> userInfo;
    deliver(arguments[0].toString(), arguments[1].toString(), userInfo);
}

void DistributedNotificationCenter::deliver(const QString& name, const QString& sender,
                                            const QVariantMap& userInfo)
{
    // Handlers may add or remove observers: walk a copy of the matching ones.
    std::vector<Handler> matching;
    for (const auto& [token, observer] : m_observers) {
        if (observer.name == name && (observer.sender.isNull() || observer.sender == sender))
            matching.push_back(observer.handler);
    }
    for (const Handler& handler : matching)
        handler(name, sender, userInfo);
}
