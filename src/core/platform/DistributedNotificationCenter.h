#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <map>

// Notifications between processes: a broadcast D-Bus signal on the session bus,
// com.morvane.DistributedNotificationCenter.Post(s name, s sender, a{sv} userInfo) from the
// object /com/morvane/DistributedNotificationCenter. Any process may post; observers filter
// by name and, when they ask to, by sender.
class DistributedNotificationCenter : public QObject {
    Q_OBJECT
public:
    static constexpr char kInterface[] = "com.morvane.DistributedNotificationCenter";
    static constexpr char kPath[] = "/com/morvane/DistributedNotificationCenter";

    using Handler = std::function<void(const QString& name, const QString& sender,
                                       const QVariantMap& userInfo)>;

    // The process's centre on the session bus.
    static DistributedNotificationCenter& defaultCenter();

    // Null sender: any sender. Returns a token for removeObserver.
    int addObserver(const QString& name, const QString& sender, Handler handler);
    void removeObserver(int token);
    bool post(const QString& name, const QString& sender, const QVariantMap& userInfo = {});

    bool isConnected() const { return m_connected; }

private Q_SLOTS:
    void onPost(const QString& name, const QString& sender, const QVariantMap& userInfo);

private:
    DistributedNotificationCenter();

    struct Observer {
        QString name;
        QString sender;
        Handler handler;
    };
    std::map<int, Observer> m_observers;
    int m_nextToken = 1;
    bool m_connected = false;
};
