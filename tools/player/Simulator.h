#pragma once

#include "MprisService.h"
#include "Playback.h"
#include "QQMusicService.h"

#include <QDBusConnection>
#include <QJsonObject>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <vector>

struct SimulatorOptions {
    QStringList players{QStringLiteral("itunes")};
    QString itunesVersion = QStringLiteral("12.1");
    quint16 qqmusicPort = 18715;
    bool qqmusicNamesVersewick = true;
    bool autoLaunch = true;
    QString mprisName = QStringLiteral("versewick_player"); // org.mpris.MediaPlayer2.<name>
    QString mprisIdentity = QStringLiteral("Versewick Player Simulator");
};

// Impersonates the players strictly through the platform bindings: owns their bus names,
// serves their scripting objects and QQMusic's loopback service, posts their notifications.
// Every command is echoed as one JSON event on standard output.
class Simulator : public QObject {
    Q_OBJECT
public:
    Simulator(SimulatorOptions options, QList<Song> playlist);
    ~Simulator() override;

    void start();
    // Queues a command line; "wait S" delays the ones after it.
    void enqueue(const QString& line);
    void endOfInput();

    static QString commandHelp();

Q_SIGNALS:
    void finished();

private:
    struct Player {
        QString kind; // itunes, qqmusic, jukora, mpris
        QString busName;
        std::unique_ptr<QDBusConnection> bus;
        std::vector<std::unique_ptr<QObject>> objects;
        bool running = false;
    };

    void runQueue();
    void execute(const QString& line);
    void launch(Player& player);
    void quit(Player& player, const QString& why);
    void songChanged();
    void stateChanged();
    void tick();
    // The MPRIS player (SimulatorMpris.cpp).
    void launchMpris(Player& player);
    bool mprisCommand(const QString& command, const QString& rest);
    void mprisFlood(int rate, double seconds);
    void mprisChanged(const QStringList& properties);
    void mprisSeeked();
    Player* find(const QString& kind);
    QJsonObject state() const;
    void emitEvent(const QString& name, QJsonObject extra = {});

    SimulatorOptions m_options;
    Playback m_playback;
    std::vector<Player> m_players;
    std::unique_ptr<QQMusicService> m_qqService;
    MprisFaults m_mprisFaults;
    MprisService* m_mpris = nullptr; // owned by the MPRIS player's objects while it runs
    QStringList m_queue;
    QTimer m_waitTimer;
    QTimer m_ticker;
    bool m_inputEnded = false;
    bool m_exited = false;
    int m_connectionCount = 0;
};
