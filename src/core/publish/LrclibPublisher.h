#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QUrl>

#include <atomic>
#include <cstdint>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;
class QThread;

// Publishes a lyric to LRCLIB: asks for a challenge, finds its nonce on a worker thread, and
// posts the lyric with the token. Each step can fail, time out or be cancelled; finished() is
// emitted exactly once per start().
class LrclibPublisher : public QObject {
    Q_OBJECT
public:
    struct Song {
        QString trackName;
        QString artistName;
        QString albumName;
        double duration = 0.0; // seconds
        QString plainLyrics;
        QString syncedLyrics;
    };
    enum class Stage { Challenge, Solving, Publishing };

    static constexpr char kUrlKey[] = "services/lrclibUrl";
    static constexpr char kDefaultUrl[] = "https://lrclib.net";
    // The service's address from the application's settings file.
    static QUrl configuredUrl();
    static QByteArray publishBody(const Song& song);

    // network: not owned; null: one of its own.
    explicit LrclibPublisher(QNetworkAccessManager* network = nullptr, QObject* parent = nullptr);
    ~LrclibPublisher() override;

    // A network step that gets no answer within this many milliseconds fails.
    void setTimeout(int ms) { m_timeoutMs = ms; }
    bool isRunning() const { return m_running; }
    void start(const QUrl& base, const Song& song);
    void cancel();

Q_SIGNALS:
    void progress(LrclibPublisher::Stage stage, quint64 hashes);
    // ok: the service answered 201; otherwise message is one sentence saying why not.
    void finished(bool ok, const QString& message);

private:
    void challengeAnswered();
    void solved(const QByteArray& prefix, std::optional<std::uint64_t> nonce);
    void publishAnswered();
    void finish(bool ok, const QString& message);
    QNetworkReply* post(const QString& path, const QByteArray& body, const QByteArray& token);
    void stopWorker();

    QPointer<QNetworkAccessManager> m_network;
    std::unique_ptr<QNetworkAccessManager> m_ownNetwork;
    QPointer<QNetworkReply> m_reply;
    std::unique_ptr<QThread> m_worker;
    std::shared_ptr<std::atomic<bool>> m_cancel;
    QTimer m_deadline; // the current network step's
    QUrl m_base;
    Song m_song;
    int m_timeoutMs = 30000;
    bool m_running = false;
};
