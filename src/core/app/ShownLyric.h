#pragma once

#include "core/lyric/Lyric.h"

#include <memory>

// The lyric on the displays, shared by the collaborators that install it (LyricAcquisition),
// clear it (SourceLoop, on a song change) and play it (SourceLoop's tick).
struct ShownLyric {
    std::unique_ptr<Lyric> parser; // the document; kept across songs, replaced or re-parsed
    bool available = false;        // it belongs to the song playing
};
