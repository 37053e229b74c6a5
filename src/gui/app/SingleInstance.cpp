#include "gui/app/SingleInstance.h"

#include "core/app/AppDBusService.h"

#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusReply>
#include <QVariant>

bool SingleInstance::showRunningInstance(QDBusConnection bus)
{
    const QString name = QLatin1String(AppDBusService::kServiceName);
    if (!bus.isConnected() || !bus.interface() || !bus.interface()->isServiceRegistered(name))
        return false;
    QDBusInterface first(name, QLatin1String(AppDBusService::kObjectPath),
                         QLatin1String(AppDBusService::kInterface), bus);
    first.setTimeout(5000);
    const QVariant visible = first.property("LyricWindowVisible");
    if (!visible.isValid() || !visible.toBool())
        first.call(QStringLiteral("ToggleLyricsWindow"));
    return true;
}
