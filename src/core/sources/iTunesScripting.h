#pragma once

#include "core/platform/ScriptingObject.h"
#include "core/sources/TrackItem.h"
#include "core/store/LyricsTrack.h"

#include <QByteArrayList>

#include <cstdint>
#include <optional>

// The iTunes player's scripting objects on D-Bus (bus name com.apple.iTunes).
namespace itunes {

inline constexpr char kBusName[] = "com.apple.iTunes";
inline constexpr char kApplicationInterface[] = "com.apple.iTunes.Application";
inline constexpr char kTrackInterface[] = "com.apple.iTunes.Track";
inline constexpr quint32 kPlaying = 0x6B505350; // 'kPSP'
inline constexpr quint32 kPaused = 0x6B505370;  // 'kPSp'
inline constexpr quint32 kStopped = 0x6B505353; // 'kPSS'

// A track object. An absent one (no current track, or a player that is gone) answers empty
// strings, 0 and false.
class Track : public LyricsTrack, public TrackItemProtocol {
public:
    Track() = default;
    explicit Track(ScriptingObject object)
        : m_object(std::move(object))
    {
    }
    bool isNull() const { return m_object.isNull(); }
    bool exists() const { return m_object.boolProperty("exists"); }
    std::int64_t databaseID() const { return m_object.int64Property("databaseID"); }
    QString name() const override { return m_object.stringProperty("name"); }
    QString artist() const override { return m_object.stringProperty("artist"); }
    QString album() const override { return m_object.stringProperty("album"); }
    QString title() const override { return name(); }
    std::int64_t length() const override { return 0; }
    double duration() const { return m_object.doubleProperty("duration"); }
    bool enabled() const { return m_object.boolProperty("enabled"); }
    int rating() const;
    QByteArrayList artworks() const;
    QString lyrics() const override { return m_object.stringProperty("lyrics"); }
    void setLyrics(const QString& lyrics) override { m_object.setProperty("lyrics", lyrics); }
    const QString& path() const { return m_object.path(); }

private:
    ScriptingObject m_object;
};

class Application {
public:
    Application();
    bool isRunning() const;
    QString version() const { return m_object.stringProperty("version"); }
    // The four-character code; 0 when unreadable.
    quint32 playerState() const;
    // Seconds: whole (before 11.0.3) or fractional; absent when unreadable or not a number.
    std::optional<double> playerPosition() const
    {
        return m_object.numberProperty("playerPosition");
    }
    Track currentTrack() const;
    void playpause() const { m_object.callNoReply("playpause"); }
    void backTrack() const { m_object.callNoReply("backTrack"); }
    void nextTrack() const { m_object.callNoReply("nextTrack"); }
    void quit() const { m_object.callNoReply("quit"); }

private:
    ScriptingObject m_object;
};

} // namespace itunes
