#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QUrl>

#include <functional>

class QNetworkReply;

// One GET at a time for a plug-in, bounded in time (the whole request, not only silences) and
// in size, answered exactly once and always from the event loop, never from inside get().
class PluginHttpGet : public QObject {
    Q_OBJECT
public:
    struct Outcome {
        bool answered = false; // the server answered (any status); false: no answer at all
        int status = 0;
        QByteArray body;
        QString error; // why there is no answer
    };
    using Done = std::function<void(const Outcome&)>;

    static constexpr int kDefaultTimeoutMs = 10000;
    static constexpr qint64 kMaxBodyBytes = 4 * 1024 * 1024;

    explicit PluginHttpGet(QObject* parent = nullptr);
    ~PluginHttpGet() override;

    // Cancels the request in flight (its done is never called) and starts this one.
    void get(const QUrl& url, Done done);
    void cancel();

    int timeoutMs() const { return m_timeoutMs; }
    void setTimeoutMs(int ms) { m_timeoutMs = ms > 0 ? ms : kDefaultTimeoutMs; }

    // "Versewick/<version> (<project page>)"
    static QByteArray userAgent();

private:
    void onFinished(QNetworkReply* reply);
    void finish(const Outcome& outcome);

    QNetworkAccessManager m_manager;
    QTimer m_timer;
    QPointer<QNetworkReply> m_reply;
    Done m_done;
    quint64 m_ticket = 0;
    bool m_timedOut = false;
    bool m_tooLarge = false;
    int m_timeoutMs = kDefaultTimeoutMs;
};
