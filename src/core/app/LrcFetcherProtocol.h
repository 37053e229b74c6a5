#pragma once

// The contract between the application and a lyric plug-in. Both sides are plain QObjects
// reached by method name (QMetaObject), so "does the object answer X" is a question the caller
// can ask before calling, and a plug-in needs nothing of ours but this header.
//
// A plug-in bundle is a folder "<name>.bundle" holding one Qt plug-in library. Its root object
// (the principal class) has these invokable methods:
//   QObject* instance()   the fetcher object; the caller takes ownership (reparents it)
//   QString  name()       display name, e.g. "LRCLIB"
//   qint64   version()    integer version
// A root object without instance() is skipped.
//
// The fetcher object (LrcFetcherProtocol) has:
//   void setDelegate(QObject* delegate)          delegate is not owned
//   void lyricsListForArtist(QString artist, QString song)
//   void lyricsContents(QVariant item)           one item of a list it answered
// and optionally
//   void lyricsListForArtist(QString artist, QString song, QString album, double duration)
// which the caller prefers when present (album "" and duration 0 when unknown).
//
// It answers, asynchronously and on the thread it lives on, through the delegate
// (LrcFetcherDelegate, all four required on the delegate's side):
//   lyricsListFetched(QVariantList items)        possibly empty
//   lyricsListFetchFailed(QString error)         error may be a null string
//   lyricsContentFetched(QString lrcText, QVariant item)
//   lyricsContentFetchFailed(QString error)
// A result item is a QVariantMap with at least "artist" and "title"; any other keys are the
// plug-in's own.

#include <QMetaObject>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <QVariantList>

namespace lrcfetcher {

inline constexpr char kPluginIid[] = "com.morvane.Versewick.LrcPlugin/1";

inline constexpr char kInstance[] = "instance()";
inline constexpr char kName[] = "name()";
inline constexpr char kVersion[] = "version()";

inline constexpr char kSetDelegate[] = "setDelegate(QObject*)";
inline constexpr char kListForArtistSong[] = "lyricsListForArtist(QString,QString)";
inline constexpr char kListForArtistSongAlbumDuration[] =
    "lyricsListForArtist(QString,QString,QString,double)";
inline constexpr char kContents[] = "lyricsContents(QVariant)";

inline constexpr char kListFetched[] = "lyricsListFetched(QVariantList)";
inline constexpr char kListFetchFailed[] = "lyricsListFetchFailed(QString)";
inline constexpr char kContentFetched[] = "lyricsContentFetched(QString,QVariant)";
inline constexpr char kContentFetchFailed[] = "lyricsContentFetchFailed(QString)";

// True when the object has an invokable method of that normalised signature.
inline bool answers(const QObject* object, const char* signature)
{
    return object && object->metaObject()->indexOfMethod(signature) >= 0;
}

// Calls for a plug-in to answer its delegate. A delegate that is gone, or lacks the method, is
// not called.
inline void sendListFetched(QObject* delegate, const QVariantList& items)
{
    if (answers(delegate, kListFetched))
        QMetaObject::invokeMethod(delegate, "lyricsListFetched", Q_ARG(QVariantList, items));
}
inline void sendListFetchFailed(QObject* delegate, const QString& error)
{
    if (answers(delegate, kListFetchFailed))
        QMetaObject::invokeMethod(delegate, "lyricsListFetchFailed", Q_ARG(QString, error));
}
inline void sendContentFetched(QObject* delegate, const QString& text, const QVariant& item)
{
    if (answers(delegate, kContentFetched))
        QMetaObject::invokeMethod(delegate, "lyricsContentFetched", Q_ARG(QString, text),
                                  Q_ARG(QVariant, item));
}
inline void sendContentFetchFailed(QObject* delegate, const QString& error)
{
    if (answers(delegate, kContentFetchFailed))
        QMetaObject::invokeMethod(delegate, "lyricsContentFetchFailed", Q_ARG(QString, error));
}

} // namespace lrcfetcher
