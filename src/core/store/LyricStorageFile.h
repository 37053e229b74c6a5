#pragma once

#include <QString>

#include <optional>

// One entry of the lyrics folder listing: "Artist--Song.lrc".
class LyricStorageFile {
public:
    // nullopt unless the extension is "lrc" (any case) and the rest holds a "--". The artist
    // is the first piece and the song the last; pieces in between are dropped.
    static std::optional<LyricStorageFile> fileFromFileName(const QString& fileName);

    QString artist;
    QString song;
    QString fileName; // as listed, extension included
};
