#include "app/LyricManagerWindow.h"

#include "app/AppDelegate.h"
#include "app/DesktopPort.h"
#include "store/LyricControl.h"
#include "windows/LyricManagerWC.h"

#include <QPointer>

LyricManagerWindow::LyricManagerWindow(AppDelegate& delegate, std::unique_ptr<DesktopPort> desktop)
    : m_window(std::make_unique<LyricManagerWC>(std::move(desktop)))
{
    QPointer<AppDelegate> app(&delegate);
    m_window->setNowPlayingProvider([app]() -> QString {
        if (!app || !app->lyricControl())
            return {};
        const AppState& state = app->state();
        if (state.title().isEmpty())
            return {};
        return app->lyricControl()->identifyFromArtist(state.artist(), state.title()) +
               QStringLiteral(".lrc");
    });
}

LyricManagerWindow::~LyricManagerWindow() = default;

void LyricManagerWindow::setLyricControl(LyricControl* control)
{
    m_window->setLyricControl(control);
}

void LyricManagerWindow::showWindow()
{
    m_window->showWindow();
}
