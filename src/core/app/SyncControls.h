#pragma once

#include "core/app/OffsetNudge.h"

#include <QObject>
#include <QTimer>

#include <functional>

class AppState;
class Lyric;
class LyricControl;
class PlayerSource;
struct ShownLyric;

// The lyric's timing under the user's hand: nudging the installed lyric's offset (saved with the
// lyric) and moving the player to a time or to a line. Owned by the controller.
class SyncControls : public QObject {
    Q_OBJECT
public:
    // What it works on; the functions answer null when there is none.
    struct Context {
        AppState& state;
        const ShownLyric& shown;
        std::function<PlayerSource*()> player;
        std::function<LyricControl*()> store;
        std::function<void()> tick; // moves the lit line now
    };
    explicit SyncControls(Context context, QObject* parent = nullptr);

    // The installed lyric's offset moved by delta seconds, or set outright: the lit line follows
    // at once, and the lyric is saved from the event loop (after the repaint; nudges in a row
    // are saved once). False (nothing changed) when the result is out of range or not a
    // number, or no lyric is shown.
    bool nudgeOffset(double delta);
    bool setOffset(double seconds);
    // Whether a value is one setOffset / nudgeOffset would take at all.
    static bool isValidDelta(double delta);

    // Asks the followed player to play from there; done(false) without a player, a lyric or
    // such a line, or when the player refuses or does not answer in time.
    void seek(double seconds, std::function<void(bool)> done);
    void seekToLine(int index, std::function<void(bool)> done);

    // Menu actions.
    void lyricEarlier() { nudgeOffset(-offsetnudge::kStep); }
    void lyricLater() { nudgeOffset(offsetnudge::kStep); }
    void resetOffset() { setOffset(0); }

Q_SIGNALS:
    // A nudge or set was applied: the displays show the new offset for a moment.
    void offsetNudged(double seconds);
    // The lyric with its new offset was saved, or why not.
    void offsetSaved(offsetnudge::Outcome outcome);

private:
    void save();
    Lyric* shownLyric() const;

    Context m_context;
    offsetnudge::Snapshot m_pending;
    QTimer m_save;
};
