#include "core/sources/iTunesScripting.h"

#include "core/platform/Workspace.h"

#include <QDBusArgument>

namespace itunes {

QByteArrayList Track::artworks() const
{
    const QVariant value = m_object.property("artworks");
    QByteArrayList images;
    if (value.metaType() != QMetaType::fromType<QDBusArgument>())
        return images;
    const QDBusArgument argument = value.value<QDBusArgument>();
    if (argument.currentSignature() == QLatin1String("aay"))
        argument >> images;
    return images;
}

int Track::rating() const
{
    const std::int64_t rating = m_object.int64Property("rating");
    return rating >= 0 && rating <= 100 ? int(rating) : 0;
}

Application::Application()
    : m_object(QLatin1String(kBusName), QStringLiteral("/"), QLatin1String(kApplicationInterface))
{
}

bool Application::isRunning() const
{
    return Workspace::isRunning(QLatin1String(kBusName));
}

quint32 Application::playerState() const
{
    const std::int64_t state = m_object.int64Property("playerState");
    return state >= 0 && state <= std::int64_t(0xFFFFFFFF) ? quint32(state) : 0;
}

Track Application::currentTrack() const
{
    return Track(m_object.objectProperty("currentTrack", QLatin1String(kTrackInterface)));
}

} // namespace itunes
