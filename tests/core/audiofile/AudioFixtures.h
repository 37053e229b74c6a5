#pragma once

#include <QString>

#include <functional>

// Audio files for the tests: made by ffmpeg (half a second of a tone), tagged by TagLib.
struct AudioFormat {
    const char* name;
    const char* extension;
    const char* codec;
    // Writes text into the format's own lyrics tag the way other taggers do.
    std::function<bool(const QString& path, const QString& text)> tagLyrics;
};

const QList<AudioFormat>& audioFormats();
// A fresh file of the format in the folder; null when ffmpeg failed.
QString makeAudioFile(const AudioFormat& format, const QString& folder, const QString& base);
// Adds an ID3v2 SYLT frame timed in milliseconds to an MP3 file.
bool addSyncedLyrics(const QString& path, const QList<std::pair<unsigned, QString>>& lines);
// Sets the file's artist and title tags.
bool setSongTags(const QString& path, const QString& artist, const QString& title);
// Whether TagLib still reads the file as audio with a sample rate.
bool isPlayableAudio(const QString& path);
