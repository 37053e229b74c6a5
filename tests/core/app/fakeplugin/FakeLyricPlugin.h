#pragma once

#include "core/app/LrcFetcherProtocol.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QPointer>
#include <QUrl>
#include <QVariant>

// The fetcher of the tests' plug-in bundle. It asks a loopback server named by the
// environment (VERSEWICK_FAKE_PLUGIN_URL): GET /list?artist&song&album&duration answers
// {"items": [...]} (items are passed on as they are, garbage included), GET /content?id=
// answers the lyric text. A response header "X-Times: N" makes it answer N times; a server
// that never answers makes it never answer; a status other than 200 is a failure.
class FakeLrcFetcher : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE void setDelegate(QObject* delegate) { m_delegate = delegate; }
    Q_INVOKABLE void lyricsListForArtist(const QString& artist, const QString& song);
    Q_INVOKABLE void lyricsListForArtist(const QString& artist, const QString& song,
                                         const QString& album, double duration);
    Q_INVOKABLE void lyricsContents(const QVariant& item);

private:
    void get(const QString& path, const std::function<void(int, const QByteArray&, int)>& done);

    QPointer<QObject> m_delegate;
    QNetworkAccessManager m_network;
};

// The principal class.
class FakeLyricPlugin : public QObject {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.morvane.Versewick.LrcPlugin/1")
public:
    Q_INVOKABLE QObject* instance() { return new FakeLrcFetcher; }
    Q_INVOKABLE QString name() const { return QStringLiteral("Fake"); }
    Q_INVOKABLE qint64 version() const { return 3; }
};
