#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

// What the controller shows, as values others can watch: the D-Bus service publishes them and
// the terminal follower prints them. Each setter signals only a real change.
class AppState : public QObject {
    Q_OBJECT
public:
    // Where the installed lyric came from.
    enum Origin { None = -1, Folder = 0, TrackTag = 1, Plugin = 2, ByHand = 3, BesideAudio = 4 };

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
    }
    void setPosition(double v) { m_position = v; } // read, never signalled
    void setMode(int v) { assign(m_mode, v, "Mode"); }
    void setLyricWindowVisible(bool v) { assign(m_lyricWindowVisible, v, "LyricWindowVisible"); }
    void setPluginInfo(const QString& v) { assign(m_pluginInfo, v, "PluginInfo"); }
    void setSynced(bool v) { assign(m_synced, v, "Synced"); }

Q_SIGNALS:
    // A published value changed; name is its D-Bus property name.
    void changed(const QString& name, const QVariant& value);
    void songChanged(int sourceKind, const QString& artist, const QString& title);
    void lineChanged(int index, const QString& text, double position);

private:
    template <typename T> void assign(T& field, const T& value, const char* name)
    {
        if (field == value)
            return;
        field = value;
        Q_EMIT changed(QLatin1String(name), QVariant::fromValue(value));
    }

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
    bool m_synced = true;
};
