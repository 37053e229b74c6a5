#pragma once

#include "PluginHttpGet.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>

// The lyric server plug-in's fetcher (the contract is in app/LrcFetcherProtocol.h): searches
// and downloads through the lyric server protocol, asynchronously. One request at a time: a new
// one cancels the one in flight, which then answers nothing.
class LrcServerFetcher : public QObject {
    Q_OBJECT
    // The time allowed for a whole request, in milliseconds.
    Q_PROPERTY(int requestTimeout READ requestTimeout WRITE setRequestTimeout)
public:
    explicit LrcServerFetcher(QObject* parent = nullptr);

    Q_INVOKABLE void setDelegate(QObject* delegate);
    Q_INVOKABLE void lyricsListForArtist(const QString& artist, const QString& song);
    Q_INVOKABLE void lyricsContents(const QVariant& item);

    int requestTimeout() const { return m_http.timeoutMs(); }
    void setRequestTimeout(int ms) { m_http.setTimeoutMs(ms); }

private:
    QPointer<QObject> m_delegate;
    PluginHttpGet m_http;
};
