#pragma once

#include <QString>
#include <QVariant>

#include <memory>

class AppDelegate;
class Lyric;
class LyricsTrack;

// Finding a lyric for the song (track tag, lyrics folder, plug-in, in turn), installing what
// is found, saving it by the user's settings, sharing online finds, and the manual search.
class LyricAcquisition {
public:
    explicit LyricAcquisition(AppDelegate& d)
        : d(d)
    {
    }

    void fetchLRC(const LyricsTrack& track);
    void installStored(std::unique_ptr<Lyric> lyric, int source);
    // Nothing at hand for the song: the plug-in is asked.
    void storeMissed(const QString& artist, const QString& song);
    void listFetched(const QVariantList& items);
    void contentFetched(const QString& text, const QVariant& item);
    void notAvailable();
    void lrcFetched(Lyric& lyric, int source);
    void forceWriteLyric(Lyric& lyric);
    void showSearchWindow();
    void setupLRCcontent(const QString& text);

    // The form the sharing service takes, each value escaped.
    static QString uploadBody(const QString& artist, const QString& content, const QString& title);

private:
    void installed(int origin);
    void upload(const QString& artist, const QString& content, const QString& title);
    // Writes to the lyrics folder; reports in the system log when the file did not land.
    void saveToFolder(const Lyric& lyric, const QString& artist, const QString& title,
                      bool overwrite);
    void save(Lyric& lyric, int origin, bool toDisk, bool overwrite);

    AppDelegate& d;
};
