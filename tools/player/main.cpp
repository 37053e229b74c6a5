// versewick-player: a player simulator for demos, manual testing and the tests. It plays a
// playlist in real time as iTunes, QQMusic and/or Jukora, through the same D-Bus names,
// objects and notifications as the real players' bridges.

#include "Simulator.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSocketNotifier>

#include <cstdio>
#include <unistd.h>

namespace {

QList<Song> demoPlaylist()
{
    return {Song{QStringLiteral("The Morvane Players"),
                 QStringLiteral("Lanterns on the Quay"),
                 QStringLiteral("Harbour Songs"),
                 75.0,
                 {},
                 {},
                 {}},
            Song{QStringLiteral("Ann"),
                 QStringLiteral("Rain"),
                 QStringLiteral("Weather"),
                 60.0,
                 {},
                 {},
                 {}}};
}

std::optional<QList<Song>> readPlaylist(const QString& path, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read %1: %2").arg(path, file.errorString());
        return std::nullopt;
    }
    QJsonParseError parse;
    const QJsonDocument doc = QJsonDocument::fromJson(file.readAll(), &parse);
    if (!doc.isArray()) {
        *error = QStringLiteral("%1 is not a JSON array of songs").arg(path);
        return std::nullopt;
    }
    QList<Song> songs;
    for (const QJsonValue& v : doc.array()) {
        const QJsonObject o = v.toObject();
        songs.append(Song{o["artist"].toString(), o["title"].toString(), o["album"].toString(),
                          o["duration"].toDouble(180.0), o["lyrics"].toString(),
                          o["url"].toString(), o["trackid"].toString()});
    }
    return songs;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("versewick-player"));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Simulates music players for Versewick on the session bus.\n\n") +
        Simulator::commandHelp());
    parser.addHelpOption();
    const QCommandLineOption as(
        {"as", "players"},
        "Players to impersonate, comma-separated: itunes, qqmusic, jukora, mpris (default "
        "itunes).",
        "list", "itunes");
    const QCommandLineOption playlist(
        "playlist",
        "JSON array of {artist, title, album, duration, lyrics, url, trackid} (default: two "
        "demo songs).",
        "file");
    const QCommandLineOption script(
        "script", "Read commands from this file instead of standard input.", "file");
    const QCommandLineOption version(
        "itunes-version",
        "Version iTunes reports (default 12.1; before 11.0.3 positions are whole seconds).",
        "version", "12.1");
    const QCommandLineOption port(
        "qqmusic-port", "Port of QQMusic's loopback service (default 18715).", "port", "18715");
    const QCommandLineOption noName(
        "qqmusic-without-name",
        "QQMusic's service does not name Versewick, so Versewick ignores it.");
    const QCommandLineOption stopped("not-running",
                                     "Start with no player launched (use 'launch').");
    const QCommandLineOption mprisName(
        "mpris-name", "The MPRIS player's bus name is org.mpris.MediaPlayer2.<name>.", "name",
        "versewick_player");
    const QCommandLineOption mprisIdentity("mpris-identity", "The MPRIS player's Identity.", "text",
                                           "Versewick Player Simulator");
    parser.addOptions(
        {as, playlist, script, version, port, noName, stopped, mprisName, mprisIdentity});
    parser.process(app);

    SimulatorOptions options;
    options.players = parser.value(as).split(u',', Qt::SkipEmptyParts);
    for (const QString& p : options.players) {
        if (p != "itunes" && p != "qqmusic" && p != "jukora" && p != "mpris") {
            std::fprintf(stderr,
                         "versewick-player: unknown player \"%s\" (itunes, qqmusic, jukora, "
                         "mpris).\n",
                         qPrintable(p));
            return 2;
        }
    }
    options.itunesVersion = parser.value(version);
    options.qqmusicPort = quint16(parser.value(port).toUInt());
    options.qqmusicNamesVersewick = !parser.isSet(noName);
    options.autoLaunch = !parser.isSet(stopped);
    options.mprisName = parser.value(mprisName);
    options.mprisIdentity = parser.value(mprisIdentity);

    QList<Song> songs = demoPlaylist();
    if (parser.isSet(playlist)) {
        QString error;
        const auto read = readPlaylist(parser.value(playlist), &error);
        if (!read) {
            std::fprintf(stderr, "versewick-player: %s.\n", qPrintable(error));
            return 1;
        }
        songs = *read;
    }

    Simulator simulator(options, songs);
    QObject::connect(&simulator, &Simulator::finished, &app, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    simulator.start();

    std::unique_ptr<QSocketNotifier> stdinNotifier;
    if (parser.isSet(script)) {
        QFile file(parser.value(script));
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "versewick-player: cannot read %s.\n",
                         qPrintable(parser.value(script)));
            return 1;
        }
        for (const QByteArray& line : file.readAll().split('\n'))
            simulator.enqueue(QString::fromUtf8(line));
        simulator.endOfInput();
    } else {
        stdinNotifier = std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read);
        auto buffer = std::make_shared<QByteArray>();
        QObject::connect(stdinNotifier.get(), &QSocketNotifier::activated, &simulator, [&, buffer] {
            char chunk[4096];
            const ssize_t n = ::read(STDIN_FILENO, chunk, sizeof chunk);
            if (n <= 0) {
                stdinNotifier->setEnabled(false);
                simulator.endOfInput();
                return;
            }
            buffer->append(chunk, n);
            qsizetype end;
            while ((end = buffer->indexOf('\n')) >= 0) {
                simulator.enqueue(QString::fromUtf8(buffer->left(end)));
                buffer->remove(0, end + 1);
            }
        });
    }
    return app.exec();
}
