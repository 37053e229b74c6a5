#include "core/app/PluginHost.h"

#include "core/app/AppState.h"
#include "core/app/AppTexts.h"
#include "core/app/LrcFetcherProtocol.h"
#include "core/app/LyricPluginLoader.h"
#include "core/foundation/SystemLog.h"
#include "core/lyric/Lyric.h"
#include "core/settings/Settings.h"

#include <QPointer>
#include <QTimer>

#include <exception>

PluginHost::PluginHost(Settings& settings, AppState& state, Loading loading, QObject& answerTo)
    : m_settings(settings)
    , m_state(state)
    , m_loading(std::move(loading))
    , m_answerTo(answerTo)
{
}

PluginHost::~PluginHost() = default;

void PluginHost::notAvailable()
{
    Q_EMIT statusChanged(apptext::tr(apptext::kNotAvailable));
}

QStringList PluginHost::allBundles() const
{
    if (m_loading.bundles)
        return m_loading.bundles();
    return LyricPluginLoader::allBundles(LyricPluginLoader::searchFolders());
}

std::unique_ptr<QObject> PluginHost::loadLyricPlugin()
{
    const QStringList bundles = allBundles();
    LyricPluginLoader::Loaded loaded =
        m_loading.loader ? m_loading.loader(bundles) : LyricPluginLoader::loadLyricPlugin(bundles);
    m_info = loaded.fetcher ? loaded.info : QString();
    if (loaded.fetcher)
        m_settings.setLrcPluginInfo(loaded.info);
    return std::move(loaded.fetcher);
}

void PluginHost::install()
{
    m_fetcher = loadLyricPlugin();
    if (m_fetcher) {
        call(lrcfetcher::kSetDelegate, [this](QObject* fetcher) {
            return QMetaObject::invokeMethod(fetcher, "setDelegate", Q_ARG(QObject*, &m_answerTo));
        });
    }
    m_settings.setIsHaveLrcPlugin(m_fetcher != nullptr);
    m_state.setPluginInfo(m_info);
}

// Calls into the plug-in; a plug-in that lacks the method or throws is reported.
bool PluginHost::call(const char* method, const std::function<bool(QObject*)>& invoke)
{
    QObject* fetcher = m_fetcher.get();
    if (!fetcher)
        return false;
    try {
        if (lrcfetcher::answers(fetcher, method) && invoke(fetcher))
            return true;
        foundation::systemLog(
            QStringLiteral("the lyric plug-in does not answer %1").arg(QLatin1String(method)));
    } catch (const std::exception& e) {
        foundation::systemLog(QStringLiteral("the lyric plug-in failed in %1: %2")
                                  .arg(QLatin1String(method), QString::fromUtf8(e.what())));
    } catch (...) {
        foundation::systemLog(
            QStringLiteral("the lyric plug-in failed in %1").arg(QLatin1String(method)));
    }
    return false;
}

void PluginHost::search(const QString& artist, const QString& song, const QString& album,
                        double duration, bool oneAtATime)
{
    if (!m_fetcher) {
        notAvailable(); // as a failed download would
        return;
    }
    if (!oneAtATime) {
        send({artist, song, album, duration});
        return;
    }
    const quint64 generation = m_generation;
    if (m_busy) {
        // The search in flight already answers this song; a newer song's search waits.
        if (generation != m_busyFor) {
            m_waiting = Search{artist, song, album, duration};
            m_waitingFor = generation;
        }
        return;
    }
    m_busy = true;
    m_busyFor = generation;
    send({artist, song, album, duration});
}

void PluginHost::send(const Search& s)
{
    const QString &artist = s.artist, &song = s.song, &album = s.album;
    const double duration = s.duration;
    const int serial = ++m_listsAsked;
    bool sent = false;
    if (lrcfetcher::answers(m_fetcher.get(), lrcfetcher::kListForArtistSongAlbumDuration)) {
        sent = call(lrcfetcher::kListForArtistSongAlbumDuration, [&](QObject* fetcher) {
            return QMetaObject::invokeMethod(fetcher, "lyricsListForArtist", Q_ARG(QString, artist),
                                             Q_ARG(QString, song), Q_ARG(QString, album),
                                             Q_ARG(double, duration));
        });
    } else {
        sent = call(lrcfetcher::kListForArtistSong, [&](QObject* fetcher) {
            return QMetaObject::invokeMethod(fetcher, "lyricsListForArtist", Q_ARG(QString, artist),
                                             Q_ARG(QString, song));
        });
    }
    if (!sent) {
        ++m_listsAnswered;
        notAvailable();
        finished();
        return;
    }
    watch(m_listsAnswered, serial, QStringLiteral("the search for %1 - %2").arg(artist, song));
}

void PluginHost::download(const QVariant& item)
{
    const int serial = ++m_contentsAsked;
    const bool sent = call(lrcfetcher::kContents, [&](QObject* fetcher) {
        return QMetaObject::invokeMethod(fetcher, "lyricsContents", Q_ARG(QVariant, item));
    });
    if (!sent) {
        ++m_contentsAnswered;
        notAvailable();
        finished();
        return;
    }
    watch(m_contentsAnswered, serial, QStringLiteral("a lyric download"));
}

// Answers arrive in the order asked; one more than asked is a repeat.
bool PluginHost::answerExpected(int& asked, int& answered, const char* what)
{
    if (answered >= asked) {
        foundation::systemLog(
            QStringLiteral("the lyric plug-in answered %1 that was not asked for (a repeated "
                           "answer?); ignored")
                .arg(QLatin1String(what)));
        return false;
    }
    ++answered;
    return true;
}

void PluginHost::watch(int& answered, int serial, const QString& what)
{
    QObject* fetcher = m_fetcher.get();
    QTimer::singleShot(kAnswerLimitMs, fetcher, [this, &answered, serial, what] {
        if (answered >= serial)
            return;
        foundation::systemLog(QStringLiteral("the lyric plug-in has not answered %1 in %2 s")
                                  .arg(what)
                                  .arg(kAnswerLimitMs / 1000));
        finished(); // a plug-in that never answers holds no later search
    });
}

bool PluginHost::stale() const
{
    return m_busy && m_busyFor != m_generation;
}

void PluginHost::finished()
{
    m_busy = false;
    if (!m_waiting)
        return;
    const Search next = *m_waiting;
    m_waiting.reset();
    m_busy = true;
    m_busyFor = m_waitingFor;
    send(next);
}

bool PluginHost::acceptList(const QVariantList& items)
{
    if (!answerExpected(m_listsAsked, m_listsAnswered, "a search"))
        return false;
    if (stale()) {
        finished();
        return false;
    }
    if (!items.isEmpty() && items.first().typeId() != QMetaType::QVariantMap) {
        foundation::systemLog(
            QStringLiteral("the lyric plug-in answered a search result that is not a map (%1); "
                           "ignored")
                .arg(QString::fromLatin1(items.first().typeName())));
        notAvailable();
        finished();
        return false;
    }
    if (items.isEmpty())
        finished();
    return true;
}

bool PluginHost::acceptListFailure()
{
    if (!answerExpected(m_listsAsked, m_listsAnswered, "a search"))
        return false;
    const bool current = !stale();
    finished();
    return current;
}

bool PluginHost::acceptContent(const QString& text)
{
    if (!answerExpected(m_contentsAsked, m_contentsAnswered, "a download"))
        return false;
    if (stale()) {
        finished();
        return false;
    }
    finished();
    if (text.size() > kMaxLyricChars) {
        foundation::systemLog(QStringLiteral("the lyric plug-in answered a text of %1 characters, "
                                             "more than a lyric holds; ignored")
                                  .arg(text.size()));
        notAvailable();
        return false;
    }
    Lyric check;
    check.parseLRCcontent(text);
    if (check.lines() == 0) {
        foundation::systemLog(QStringLiteral("the lyric plug-in answered a text of %1 characters "
                                             "without any timed line; ignored")
                                  .arg(text.size()));
        notAvailable();
        return false;
    }
    return true;
}

bool PluginHost::acceptContentFailure()
{
    if (!answerExpected(m_contentsAsked, m_contentsAnswered, "a download"))
        return false;
    const bool current = !stale();
    finished();
    return current;
}
