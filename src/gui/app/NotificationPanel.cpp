#include "app/NotificationPanel.h"

#include "app/AppDelegate.h"
#include "display/NotificationWindow.h"
#include "display/NotificationWindowController.h"

#include <QPointer>

NotificationPanel::NotificationPanel(AppDelegate& delegate)
    : m_controller(std::make_unique<NotificationWindowController>())
    , m_guard(std::make_unique<QObject>())
{
    QPointer<AppDelegate> app(&delegate);
    QObject* guard = m_guard.get();
    m_controller->setDelegate([app, guard] {
        QMetaObject::invokeMethod(
            guard,
            [app] {
                if (app)
                    app->notificationCanBeRemoved();
            },
            Qt::QueuedConnection);
    });
}

NotificationPanel::~NotificationPanel() = default;

void NotificationPanel::showTrack(const Track& track)
{
    if (NotificationWindow* window = m_controller->window())
        window->setWindowOpacity(0);
    m_controller->setTrack({track.name, track.artist, track.album, track.duration});
    m_controller->resize();
    m_controller->setPositionCorner(2);
    m_controller->showWindow();
}

void NotificationPanel::disappear()
{
    m_controller->setDelegate({});
    m_controller->disappear();
}

void NotificationPanel::close()
{
    m_controller->close();
}
