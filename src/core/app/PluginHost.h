#pragma once

#include "core/app/LyricPluginLoader.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

class AppState;
class Settings;

// The lyric plug-in: loading it at start-up, asking it, and checking its answers. A plug-in
// is outside code: an answer that was not asked for (a second one), one that never comes,
// and results or texts that are not lyrics are each reported in the system log once, and
// never reach the displays or the lyrics folder.
class PluginHost : public QObject {
    Q_OBJECT
public:
    static constexpr int kAnswerLimitMs = 30000;
    // A downloaded text longer than any real lyric is refused unparsed.
    static constexpr qsizetype kMaxLyricChars = 4 << 20;

    // Where the plug-in comes from; empty: the loader's search folders and LyricPluginLoader.
    struct Loading {
        std::function<QStringList()> bundles;
        std::function<LyricPluginLoader::Loaded(const QStringList&)> loader;
    };

    // The plug-in's answers go to answerTo (its LrcFetcherDelegate), which hands them back
    // through the accept calls below.
    PluginHost(Settings& settings, AppState& state, Loading loading, QObject& answerTo);
    ~PluginHost() override;

    QStringList allBundles() const;
    std::unique_ptr<QObject> loadLyricPlugin();
    // Start-up: keep the plug-in, make answerTo its delegate, record it in the settings.
    void install();
    // The plug-in kept, or null.
    QObject* fetcher() const { return m_fetcher.get(); }
    void unload() { m_fetcher.reset(); }

    // With oneAtATime, a search waits for the one in flight and an answer for an earlier song
    // is dropped; otherwise every search goes out and every answer is taken.
    void search(const QString& artist, const QString& song, const QString& album, double duration,
                bool oneAtATime);
    void download(const QVariant& item);

    // Whether an answer of the plug-in is to be taken (false: logged and dropped).
    bool acceptList(const QVariantList& items);
    bool acceptListFailure();
    bool acceptContent(const QString& text);
    bool acceptContentFailure();
    // The controller took an accepted list without downloading from it: the search is over.
    void listSettled() { finished(); }

public Q_SLOTS:
    // The song changed (this generation): answers for an earlier one are stale.
    void songChanging(quint64 generation) { m_generation = generation; }

Q_SIGNALS:
    // A message for the displays (the lyric is not available).
    void statusChanged(const QString& status);

private:
    struct Search {
        QString artist, song, album;
        double duration = 0.0;
    };
    void send(const Search& search);
    // The search and its download are over: the one waiting, if any, goes out.
    void finished();
    // The song changed since the search in flight was asked: its answer is dropped.
    bool stale() const;
    bool answerExpected(int& asked, int& answered, const char* what);
    void watch(int& answered, int serial, const QString& what);
    bool call(const char* method, const std::function<bool(QObject*)>& invoke);

    void notAvailable();

    Settings& m_settings;
    AppState& m_state;
    Loading m_loading;
    QObject& m_answerTo;
    std::unique_ptr<QObject> m_fetcher;
    quint64 m_generation = 0;
    QString m_info;
    int m_listsAsked = 0;
    int m_listsAnswered = 0;
    int m_contentsAsked = 0;
    int m_contentsAnswered = 0;
    // One search at a time: a newer song's search waits for the one in flight, and replaces
    // any other that waits.
    bool m_busy = false;
    quint64 m_busyFor = 0; // the song change it was asked for
    std::optional<Search> m_waiting;
    quint64 m_waitingFor = 0;
};
