#include "gui/app/LyricManagerWindow.h"

#include "core/app/AppDelegate.h"
#include "core/app/DesktopPort.h"
#include "core/sources/JukoraControl.h"
#include "core/sources/iTunesControl.h"
#include "core/store/LyricControl.h"
#include "gui/windows/LyricManagerWC.h"

#include <QPointer>

LyricManagerWindow::LyricManagerWindow(AppDelegate& delegate, std::unique_ptr<DesktopPort> desktop,
                                       iTunesControl* itunes)
    : m_window(std::make_unique<LyricManagerWC>(std::move(desktop)))
{
    QPointer<AppDelegate> app(&delegate);
    QPointer<iTunesControl> tunes(itunes);
    m_window->setNowPlayingProvider([app, tunes]() -> QString {
        const LyricControl* store = app ? app->lyricControl() : nullptr;
        if (!store)
            return {};
        if (const auto track = tunes ? tunes->currentTrack() : std::nullopt)
            return store->fileNameFromTrack(*track);
        const JukoraControl* jukora = app->djControl();
        if (const auto item = jukora ? jukora->item() : std::nullopt)
            return store->identifyFromArtist(item->artist(), item->title()) +
                   QStringLiteral(".lrc");
        return {};
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
