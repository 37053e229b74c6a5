#pragma once

#include <QCoreApplication>
#include <QString>

// The controller's user-visible texts, looked up in the translation table with the English
// text as key (an untranslated key shows itself).
namespace apptext {

inline QString tr(const char* key)
{
    return QCoreApplication::translate("AppDelegate", key);
}

inline constexpr char kFetching[] = "fetching lyrics...";
inline constexpr char kNotAvailable[] = "lyric is not available";
inline constexpr char kNoMusicSource[] = "No Music Source";
// Shown whatever the player: the message has always named iTunes.
inline constexpr char kITunesNotRunning[] = "iTunes is not running";
inline constexpr char kITunesNotPlaying[] = "iTunes is not playing";
inline constexpr char kQQMusicNotPlaying[] = "QQMusic is not playing";
inline constexpr char kJukoraNotPlaying[] = "Jukora is not playing";
inline constexpr char kPlayerNotPlaying[] = "%1 is not playing";
inline constexpr char kShowLRC[] = "Show LRC";
inline constexpr char kHideLRC[] = "Hide LRC";
inline constexpr char kITunes[] = "iTunes";
inline constexpr char kJukora[] = "Jukora";
inline constexpr char kPanelTitle[] = "Versewick";

} // namespace apptext
