#include "sources/iTunesScripting.h"

#include "platform/Workspace.h"

#include <QDBusArgument>

namespace itunes {

QByteArrayList Track::artworks() const
{
    const QVariant value = m_object.property("artworks");
    QByteArrayList images;
    if (value.canConvert<QDBusArgument>()) {
        const QDBusArgument argument = value.value<QDBusArgument>();
        argument >> images;
    }
    return images;
}

Application::Application()
    : m_object(QLatin1String(kBusName), QStringLiteral("/"), QLatin1String(kApplicationInterface))
{
}

bool Application::isRunning() const
{
    return Workspace::isRunning(QLatin1String(kBusName));
}

Track Application::currentTrack() const
{
    return Track(m_object.objectProperty("currentTrack", QLatin1String(kTrackInterface)));
}

} // namespace itunes
