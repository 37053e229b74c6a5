#pragma once

#include <QObject>
#include <QString>

// Applications on Linux: an application's bundle identifier is the D-Bus name it owns on the
// session bus. A name gaining an owner is a launch (will-launch, then did-launch); losing it
// is a termination.
class Workspace : public QObject {
    Q_OBJECT
public:
    static Workspace& sharedWorkspace();

    // Whether an application with this identifier is running now.
    static bool isRunning(const QString& bundleIdentifier);

Q_SIGNALS:
    void willLaunchApplication(const QString& bundleIdentifier);
    void didLaunchApplication(const QString& bundleIdentifier);
    void didTerminateApplication(const QString& bundleIdentifier);
    // Any change of a well-known name's owner, a hand-over from one owner to another included.
    void ownerChanged(const QString& name);

private Q_SLOTS:
    void onNameOwnerChanged(const QString& name, const QString& oldOwner, const QString& newOwner);

private:
    Workspace();
};
