#pragma once

#include <QCoreApplication>
#include <QString>

// The controller's user-visible texts, looked up in the translation table with the English
// text as key (an untranslated key shows itself). QT_TRANSLATE_NOOP lets lupdate see each key
// under the context tr() looks it up in.
namespace apptext {

inline QString tr(const char* key)
{
    return QCoreApplication::translate("AppDelegate", key);
}

inline constexpr char kFetching[] = QT_TRANSLATE_NOOP("AppDelegate", "fetching lyrics...");
inline constexpr char kNotAvailable[] = QT_TRANSLATE_NOOP("AppDelegate", "lyric is not available");
inline constexpr char kUnsynced[] = QT_TRANSLATE_NOOP("AppDelegate", "unsynced lyric");
inline constexpr char kNoMusicSource[] = QT_TRANSLATE_NOOP("AppDelegate", "No Music Source");
// Shown whatever the player: the message has always named iTunes.
inline constexpr char kITunesNotRunning[] =
    QT_TRANSLATE_NOOP("AppDelegate", "iTunes is not running");
inline constexpr char kITunesNotPlaying[] =
    QT_TRANSLATE_NOOP("AppDelegate", "iTunes is not playing");
inline constexpr char kQQMusicNotPlaying[] =
    QT_TRANSLATE_NOOP("AppDelegate", "QQMusic is not playing");
inline constexpr char kJukoraNotPlaying[] =
    QT_TRANSLATE_NOOP("AppDelegate", "Jukora is not playing");
inline constexpr char kPlayerNotPlaying[] = QT_TRANSLATE_NOOP("AppDelegate", "%1 is not playing");
inline constexpr char kShowLRC[] = QT_TRANSLATE_NOOP("AppDelegate", "Show LRC");
inline constexpr char kHideLRC[] = QT_TRANSLATE_NOOP("AppDelegate", "Hide LRC");
inline constexpr char kITunes[] = QT_TRANSLATE_NOOP("AppDelegate", "iTunes");
inline constexpr char kJukora[] = QT_TRANSLATE_NOOP("AppDelegate", "Jukora");
// The QQMusic source's name: looked up by the name the source gives, never through this constant.
inline constexpr char kQQMusic[] = QT_TRANSLATE_NOOP("AppDelegate", "QQ音乐");
// The product's name: never translated.
inline constexpr char kPanelTitle[] = "Versewick";

} // namespace apptext
