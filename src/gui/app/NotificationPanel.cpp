#include "gui/app/NotificationPanel.h"

#include "core/app/AppDelegate.h"
#include "gui/display/NotificationWindow.h"
#include "gui/display/NotificationWindowController.h"
#include "gui/windows/FrontWindow.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

namespace {
// The frames of the application's shown windows (the lyric panel, the strip, any open
// window) but the notification itself: the notification goes where it hides none of them.
std::vector<QRect> shownWindows(const QWidget* except)
{
    std::vector<QRect> frames;
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
        const Qt::WindowType type = widget->windowType();
        if (widget != except && widget->isVisible() && type != Qt::Popup && type != Qt::ToolTip)
            frames.push_back(FrontWindow::coveredArea(widget));
    }
    return frames;
}
} // namespace

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
    m_controller->placeAvoiding(shownWindows(m_controller->window()));
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
