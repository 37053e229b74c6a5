#include "core/platform/Workspace.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>

Workspace& Workspace::sharedWorkspace()
{
    static Workspace* workspace = new Workspace; // process-long
    return *workspace;
}

Workspace::Workspace()
{
    // Only the bus sends it; the exact signature is asked for all the same, as for any signal.
    QDBusConnection::sessionBus().connect(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"),
        QStringLiteral("sss"), this, SLOT(onNameOwnerChanged(QString, QString, QString)));
}

bool Workspace::isRunning(const QString& bundleIdentifier)
{
    const QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
    return bus && bus->isServiceRegistered(bundleIdentifier).value();
}

void Workspace::onNameOwnerChanged(const QString& name, const QString& oldOwner,
                                   const QString& newOwner)
{
    if (name.startsWith(u':'))
        return; // unique connection names are not applications
    Q_EMIT ownerChanged(name);
    if (oldOwner.isEmpty() && !newOwner.isEmpty()) {
        Q_EMIT willLaunchApplication(name);
        Q_EMIT didLaunchApplication(name);
    } else if (!oldOwner.isEmpty() && newOwner.isEmpty()) {
        Q_EMIT didTerminateApplication(name);
    }
}
