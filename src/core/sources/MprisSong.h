#pragma once

#include <QString>
#include <QVariant>

#include <optional>

// The song an MPRIS player reports in its Metadata. Absent fields are null strings.
struct MprisSong {
    QString trackId;                          // mpris:trackid
    QString title;                            // xesam:title
    QString artist;                           // xesam:artist, a list joined with ", "
    QString album;                            // xesam:album
    QString url;                              // xesam:url
    std::optional<qint64> lengthMicroseconds; // mpris:length

    static MprisSong fromMetadata(const QVariant& metadata);

    // Neither a title nor a url: nothing to search lyrics for.
    bool isEmpty() const { return title.isEmpty() && url.isEmpty(); }
    // Another song: its track id, title, artist or url differs (the album alone does not).
    bool isOtherSongThan(const MprisSong& other) const;
    double lengthSeconds() const;
    // The file's path when the url names a local file; null otherwise.
    QString localFilePath() const;
};
