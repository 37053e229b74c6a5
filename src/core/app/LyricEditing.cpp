#include "core/app/LyricEditing.h"

#include "core/app/AppDelegate.h"
#include "core/app/SyncControls.h"
#include "core/editor/LrcDraft.h"
#include "core/editor/PlayClock.h"
#include "core/lyric/Lyric.h"
#include "core/store/LyricControl.h"
#include "core/store/LyricFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>

namespace lyricediting {

QString initialText(const AppDelegate& delegate)
{
    // A plain lyric is edited as the text it is, without the times that keep it unlit.
    if (!delegate.state().synced())
        return delegate.plainLyricText();
    const Lyric* lyric = delegate.lyric();
    return delegate.lrcAvailable() && lyric ? lyric->contents() : QString();
}

std::optional<EditedSong> song(AppDelegate& delegate)
{
    PlayerSource* player = delegate.activePlayer();
    if (!player)
        return std::nullopt;
    auto names = player->nowPlaying();
    if (!names)
        return std::nullopt;
    const PlayerSong details = player->searchDetails();
    names->album = details.album;
    names->duration = details.duration;
    return EditedSong{*names, player->savedNames()};
}

double playTime(AppDelegate& delegate, PlayClock& clock)
{
    static const QElapsedTimer since = [] {
        QElapsedTimer timer;
        timer.start();
        return timer;
    }();
    return clock.at(delegate.state().position(), since.elapsed());
}

void seek(AppDelegate& delegate, double seconds, std::function<void(bool)> done)
{
    delegate.sync().seek(seconds, std::move(done));
}

std::optional<QString> save(AppDelegate& delegate, const std::optional<EditedSong>& song,
                            const QString& lrc)
{
    // Without a single time it is a plain lyric, and would be stored as if it were synced.
    if (LrcDraft::fromText(lrc).timedCount() == 0)
        return QCoreApplication::translate("LyricEditing",
                                           "Time at least one line before saving the lyric.");
    const auto names = song ? song->filed : std::nullopt;
    LyricControl* store = delegate.lyricControl();
    if (!names || !store || names->artist.isEmpty() || names->title.isEmpty())
        return QCoreApplication::translate("LyricEditing",
                                           "There is no song playing to save the lyric for.");
    const QString identify = store->identifyFromArtist(names->artist, names->title);
    if (!LyricControl::whyNotStorable(identify).isNull())
        return QCoreApplication::translate(
            "LyricEditing", "The song's name cannot be a file name in the lyrics folder.");
    QDir().mkpath(LyricControl::_pathLrcs());
    const QString path = LyricControl::_pathForIdentify(identify + QStringLiteral(".lrc"));
    if (!lyricfiles::replaceFile(path, lrc.toUtf8()))
        return QCoreApplication::translate("LyricEditing", "The lyric could not be written to %1.")
            .arg(path);
    // Another song may play by now: its lyric stays; this one is found when its song plays.
    const auto playing = lyricediting::song(delegate);
    const auto now = playing ? playing->filed : std::nullopt;
    if (now && now->artist == names->artist && now->title == names->title)
        delegate.installEditedLyric(lrc);
    return std::nullopt;
}

} // namespace lyricediting
