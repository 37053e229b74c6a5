#include "gui/windows/SystemDesktop.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

void SystemDesktop::openUrl(const QUrl& url)
{
    QDesktopServices::openUrl(url);
}

void SystemDesktop::openInTextEditor(const QString& path)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void SystemDesktop::revealFile(const QString& path)
{
    const QString folder = QFileInfo(path).absolutePath();
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QUrl::fromLocalFile(path).toString()} << QString();
    // Asynchronous, so a file manager that is slow to start never blocks the window.
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, 5000));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [folder](QDBusPendingCallWatcher* self) {
                         if (self->isError())
                             QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
                         self->deleteLater();
                     });
}
