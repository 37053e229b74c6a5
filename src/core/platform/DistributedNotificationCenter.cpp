#include "platform/DistributedNotificationCenter.h"

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
    // QtDBus connects signals by signature string; there is no member-pointer form.
    m_connected = QDBusConnection::sessionBus().connect(
        QString(), QLatin1String(kPath), QLatin1String(kInterface), QStringLiteral("Post"), this,
        SLOT(onPost(QString, QString, QVariantMap)));
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

void DistributedNotificationCenter::onPost(const QString& name, const QString& sender,
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
