#include "core/store/TrackArtworksValueTransformer.h"

#include "core/foundation/AppPaths.h"
#include "core/foundation/ImageScaler.h"

#include <QVariantList>

QVariant TrackArtworksValueTransformer::transformedValue(const QVariant& value)
{
    if (value.typeId() != QMetaType::QVariantList)
        return value;
    const QVariantList artworks = value.toList();
    QImage image;
    if (!artworks.isEmpty())
        image = QImage::fromData(artworks.last().toByteArray());
    if (image.isNull())
        image = appIcon();
    return ImageScaler::scaleImage(image, QSize(kSide, kSide));
}

QImage TrackArtworksValueTransformer::appIcon()
{
    QImage icon(foundation::resourcePath(QStringLiteral("app_icon.png")));
    if (icon.isNull()) {
        icon = QImage(kSide, kSide, QImage::Format_ARGB32);
        icon.fill(QColor(0x3a, 0x6e, 0xa5));
    }
    return icon;
}
