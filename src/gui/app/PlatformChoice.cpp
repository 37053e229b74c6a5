#include "gui/app/PlatformChoice.h"

QByteArray PlatformChoice::forcedPlatform(const QByteArray& sessionType, bool platformSetByUser)
{
    if (platformSetByUser || sessionType.trimmed().toLower() != "wayland")
        return {};
    return QByteArrayLiteral("xcb");
}

void PlatformChoice::apply()
{
    const QByteArray platform =
        forcedPlatform(qgetenv("XDG_SESSION_TYPE"), qEnvironmentVariableIsSet("QT_QPA_PLATFORM"));
    if (!platform.isEmpty())
        qputenv("QT_QPA_PLATFORM", platform);
}
