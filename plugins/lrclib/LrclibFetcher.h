#pragma once

#include "LrclibAnswer.h"
#include "PluginHttpGet.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QUrl>
#include <QVariant>

// The LRCLIB plug-in's fetcher (the contract is in app/LrcFetcherProtocol.h). One search at a
// time: a new one cancels the one in flight, which then answers nothing.
class LrclibFetcher : public QObject {
    Q_OBJECT
    // The time allowed for a whole request, in milliseconds.
    Q_PROPERTY(int requestTimeout READ requestTimeout WRITE setRequestTimeout)
public:
    static constexpr char kUrlKey[] = "services/lrclibUrl";
    static constexpr char kDefaultUrl[] = "https://lrclib.net";

    explicit LrclibFetcher(QObject* parent = nullptr);

    Q_INVOKABLE void setDelegate(QObject* delegate);
    Q_INVOKABLE void lyricsListForArtist(const QString& artist, const QString& song);
    Q_INVOKABLE void lyricsListForArtist(const QString& artist, const QString& song,
                                         const QString& album, double duration);
    Q_INVOKABLE void lyricsContents(const QVariant& item);

    int requestTimeout() const { return m_http.timeoutMs(); }
    void setRequestTimeout(int ms) { m_http.setTimeoutMs(ms); }

    // The base address from the application's settings file, or the default.
    static QUrl baseUrl();
    // /api/get when album and duration are known, else /api/search. A 404 from /api/get, or a
    // track there without synced lyrics, is followed by /api/search.
    static QUrl requestUrl(const QUrl& base, const QString& artist, const QString& song,
                           const QString& album, double duration);

private:
    struct Query {
        QString artist, song;
        double duration = 0;
    };
    // /api/search; its records are ranked together with those already found.
    void search(const Query& query, const QList<lrclib::Record>& found);
    void answer(const Query& query, const QList<lrclib::Record>& records);

    QPointer<QObject> m_delegate;
    PluginHttpGet m_http;
};
