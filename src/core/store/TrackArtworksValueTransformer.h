#pragma once

#include <QImage>
#include <QVariant>

// A track's artworks (a list of raw image data) as one 128 x 128 picture: the last artwork,
// or the application icon when the list is empty or the data is no image. Anything but a list
// passes unchanged.
class TrackArtworksValueTransformer {
public:
    static constexpr int kSide = 128;

    static bool allowsReverseTransformation() { return false; }
    static QVariant transformedValue(const QVariant& value);
    // "app_icon.png" among the resources; a plain square when it is missing.
    static QImage appIcon();
};
