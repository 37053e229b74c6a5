#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <map>
#include <utility>

// Notifications between processes: a broadcast D-Bus signal on the session bus,
// com.morvane.DistributedNotificationCenter.Post(s name, s sender, a{sv} userInfo) from the
// object /com/morvane/DistributedNotificationCenter. Any process may post; observers filter
// by name and, when they ask to, by sender. A Post of any other signature is ignored.
class DistributedNotificationCenter : public QObject {
    Q_OBJECT
public:
    static constexpr char kInterface[] = "com.morvane.DistributedNotificationCenter";
    static constexpr char kPath[] = "/com/morvane/DistributedNotificationCenter";
    static constexpr char kSignature[] = "ssa{sv}";

    using Handler = std::function<void(const QString& name, const QString& sender,
                                       const QVariantMap& userInfo)>;

    // The process's centre on the session bus.
    static DistributedNotificationCenter& defaultCenter();

    // Keeps an observer registered for its lifetime; moving it moves the registration.
    class Observation {
    public:
        Observation() = default;
        Observation(DistributedNotificationCenter* center, int token)
            : m_center(center)
            , m_token(token)
        {
        }
        Observation(Observation&& other) noexcept
            : m_center(std::exchange(other.m_center, nullptr))
            , m_token(other.m_token)
        {
        }
        Observation& operator=(Observation&& other) noexcept
        {
            if (this != &other) {
                reset();
                m_center = std::exchange(other.m_center, nullptr);
                m_token = other.m_token;
            }
            return *this;
        }
        ~Observation() { reset(); }
        void reset()
        {
            if (m_center)
                m_center->removeObserver(std::exchange(m_token, 0));
            m_center = nullptr;
        }

    private:
        DistributedNotificationCenter* m_center = nullptr;
        int m_token = 0;
    };

    // Null sender: any sender. Returns a token for removeObserver.
    int addObserver(const QString& name, const QString& sender, Handler handler);
    void removeObserver(int token);
    [[nodiscard]] Observation observe(const QString& name, const QString& sender, Handler handler)
    {
        return Observation(this, addObserver(name, sender, std::move(handler)));
    }
    bool post(const QString& name, const QString& sender, const QVariantMap& userInfo = {});

    bool isConnected() const { return m_connected; }

private Q_SLOTS:
    void onPost(const QDBusMessage& message);

private:
    void deliver(const QString& name, const QString& sender, const QVariantMap& userInfo);
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
