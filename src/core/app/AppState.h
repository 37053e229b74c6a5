#pragma once

#include "core/display/KaraokeLine.h"

#include <QObject>
#include <QString>
#include <QVariant>

class Lyric;

// The one view model: everything the controller shows, as values others watch. The displays,
// the status menu, the D-Bus service and the terminal follower observe it; the controller never
// reaches a display otherwise. Published values signal only a real change; what the displays are
// handed (the lyric, the play time, messages, the strip's text) is signalled on every write, as
// a display lays the same lyric out again when it comes back parsed afresh.
class AppState : public QObject {
    Q_OBJECT
public:
    // Where the installed lyric came from.
    enum Origin { None = -1, Folder = 0, TrackTag = 1, Plugin = 2, ByHand = 3, BesideAudio = 4 };

    // The lyric the displays show (not owned; null: none) and the play time they follow.
    Lyric* shownLyric() const { return m_shownLyric; }
    void showLyric(Lyric* lyric);
    void showPlayTime(float seconds) { Q_EMIT playTimeShown(seconds); }
    // A message over the lyric and in the strip (null: cleared); published as Status and Line.
    void showInfo(const QString& info);
    // The status menu: the show/hide item's title and the two mode check marks.
    QString toggleTitle() const { return m_toggleTitle; }
    bool streamItemOn() const { return m_streamItemOn; }
    bool lineItemOn() const { return m_lineItemOn; }
    void setToggleTitle(const QString& title);
    void setModeItems(bool streamOn, bool lineOn);

    int sourceKind() const { return m_sourceKind; }
    QString sourceName() const { return m_sourceName; }
    QString artist() const { return m_artist; }
    QString title() const { return m_title; }
    QString panelTitle() const { return m_panelTitle; }
    QString status() const { return m_status; }
    bool lyricLoaded() const { return m_lyricLoaded; }
    int lyricOrigin() const { return m_lyricOrigin; }
    int lineIndex() const { return m_lineIndex; }
    QString line() const { return m_line; }
    double position() const { return m_position; }
    int mode() const { return m_mode; }
    bool lyricWindowVisible() const { return m_lyricWindowVisible; }
    QString pluginInfo() const { return m_pluginInfo; }
    QString secondaryLine() const { return m_secondaryLine; }
    // The installed lyric's offset in seconds; 0 without a lyric.
    double offset() const { return m_offset; }
    bool synced() const { return m_synced; }

    void setSourceKind(int v) { assign(m_sourceKind, v, "SourceKind"); }
    void setSourceName(const QString& v) { assign(m_sourceName, v, "SourceName"); }
    // The song, signalled once when artist or title (or both) changed.
    void setSong(const QString& artist, const QString& title);
    void setPanelTitle(const QString& v) { assign(m_panelTitle, v, "PanelTitle"); }
    // Null or empty: cleared.
    void setStatus(const QString& v);
    // Without a lyric there is no origin and no lit line: both read -1.
    void setLyricLoaded(bool v);
    void setLyricOrigin(int v) { assign(m_lyricOrigin, v, "LyricOrigin"); }
    // The lit line and the text last handed to the single-line display; lineChanged when the
    // index or the text changed.
    void setLine(int index, const QString& text, double position);
    // The text handed to the single-line display by a message: Line only, no lineChanged.
    void setLineText(const QString& text)
    {
        assign(m_line, text.isNull() ? QStringLiteral("") : text, "Line");
        Q_EMIT stripTextShown(text);
    }
    void setPosition(double v) { m_position = v; } // read, never signalled
    // The lit line's word timing, set before the line itself; read, never signalled.
    const KaraokeLine& litLine() const { return m_litLine; }
    void setLitLine(const KaraokeLine& line) { m_litLine = line; }
    // The sung fraction of the lit line's words at the last position; -1 without word timing.
    double lineProgress() const;
    void setMode(int v) { assign(m_mode, v, "Mode"); }
    void setLyricWindowVisible(bool v) { assign(m_lyricWindowVisible, v, "LyricWindowVisible"); }
    void setPluginInfo(const QString& v) { assign(m_pluginInfo, v, "PluginInfo"); }
    // The text shown under the lit line (its translation or reading); null or empty: none.
    void setSecondaryLine(const QString& v)
    {
        assign(m_secondaryLine, v.isNull() ? QStringLiteral("") : v, "SecondaryLine");
    }
    void setOffset(double v) { assign(m_offset, v, "Offset"); }
    void setSynced(bool v) { assign(m_synced, v, "Synced"); }

Q_SIGNALS:
    // A published value changed; name is its D-Bus property name.
    void changed(const QString& name, const QVariant& value);
    void songChanged(int sourceKind, const QString& artist, const QString& title);
    void lineChanged(int index, const QString& text, double position);
    void lyricShown(Lyric* lyric);
    void playTimeShown(float seconds);
    void infoShown(const QString& info);
    // The strip's text: the lit line, a message, or null (blank).
    void stripTextShown(const QString& text);
    void menuChanged();

private:
    template <typename T> void assign(T& field, const T& value, const char* name)
    {
        if (field == value)
            return;
        field = value;
        Q_EMIT changed(QLatin1String(name), QVariant::fromValue(value));
    }

    Lyric* m_shownLyric = nullptr;
    QString m_toggleTitle;
    bool m_streamItemOn = false, m_lineItemOn = false;

    int m_sourceKind = 0;
    QString m_sourceName;
    QString m_artist = QStringLiteral("");
    QString m_title = QStringLiteral("");
    QString m_panelTitle = QStringLiteral("");
    QString m_status = QStringLiteral("");
    bool m_lyricLoaded = false;
    int m_lyricOrigin = None;
    int m_lineIndex = -1;
    QString m_line = QStringLiteral("");
    double m_position = 0.0;
    int m_mode = 0;
    bool m_lyricWindowVisible = false;
    QString m_pluginInfo = QStringLiteral("");
    QString m_secondaryLine = QStringLiteral("");
    double m_offset = 0.0;
    KaraokeLine m_litLine;
    bool m_synced = true;
};
