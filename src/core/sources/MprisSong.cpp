#include "core/sources/MprisSong.h"

#include "core/sources/MprisValues.h"

#include <QUrl>

MprisSong MprisSong::fromMetadata(const QVariant& metadata)
{
    const QVariantMap map = mpris::dictionary(metadata);
    MprisSong song;
    song.trackId = mpris::objectPath(map.value(QStringLiteral("mpris:trackid")));
    song.title = mpris::string(map.value(QStringLiteral("xesam:title")));
    song.artist = mpris::stringOrList(map.value(QStringLiteral("xesam:artist")));
    song.album = mpris::string(map.value(QStringLiteral("xesam:album")));
    song.url = mpris::string(map.value(QStringLiteral("xesam:url")));
    song.lengthMicroseconds = mpris::microseconds(map.value(QStringLiteral("mpris:length")));
    return song;
}

bool MprisSong::isOtherSongThan(const MprisSong& other) const
{
    return trackId != other.trackId || title != other.title || artist != other.artist ||
           url != other.url;
}

double MprisSong::lengthSeconds() const
{
    return lengthMicroseconds ? double(*lengthMicroseconds) / 1e6 : 0.0;
}

QString MprisSong::localFilePath() const
{
    if (url.isEmpty())
        return {};
    const QUrl parsed(url, QUrl::StrictMode);
    if (!parsed.isValid() || !parsed.isLocalFile())
        return {};
    return parsed.toLocalFile();
}
