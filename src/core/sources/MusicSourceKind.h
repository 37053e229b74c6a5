#pragma once

// The active source, as the application controller keeps it.
enum MusicSourceKind : int {
    MusicSourceKindNone = 0,
    MusicSourceKindITunes = 1,
    MusicSourceKindJukora = 2,
    MusicSourceKindQQMusic = 3,
    MusicSourceKindMpris = 4,
};
