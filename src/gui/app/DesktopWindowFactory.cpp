#include "gui/app/DesktopWindowFactory.h"

#include "core/app/AppDelegate.h"
#include "core/app/LyricEditing.h"
#include "core/app/PreferencesPort.h"
#include "core/editor/PlayClock.h"
#include "core/settings/ServiceAddresses.h"
#include "core/settings/Settings.h"
#include "core/sources/iTunesControl.h"
#include "gui/app/LyricManagerWindow.h"
#include "gui/app/NotificationPanel.h"
#include "gui/app/SearchWindow.h"
#include "gui/tray/AppIcon.h"
#include "gui/windows/FrontWindow.h"
#include "gui/windows/LyricEditorWindow.h"
#include "gui/windows/SystemDesktop.h"

#include <QCoreApplication>
#include <QMessageBox>

DesktopWindowFactory::DesktopWindowFactory(ServiceAddresses& addresses,
                                           PreferencesFactory preferences)
    : m_addresses(addresses)
    , m_preferences(std::move(preferences))
{
}

DesktopWindowFactory::~DesktopWindowFactory() = default;

void DesktopWindowFactory::setDelegate(AppDelegate* delegate)
{
    m_delegate = delegate;
}

// The window's fetcher is a new instance of the plug-in the controller uses, loaded the way the
// controller loads its own (the libraries already are loaded).
std::unique_ptr<SearchWindowPort> DesktopWindowFactory::createSearchWindow()
{
    if (!m_delegate)
        return nullptr;
    AppDelegate& delegate = *m_delegate;
    std::unique_ptr<QObject> fetcher = delegate.loadLyricPlugin();
    const QString name = fetcher ? delegate.settings().lrcPluginInfo() : QString();
    return std::make_unique<SearchWindow>(delegate, std::move(fetcher), name,
                                          m_addresses.lyricServerHost());
}

std::unique_ptr<LyricManagerPort> DesktopWindowFactory::createLyricManager()
{
    if (!m_delegate)
        return nullptr;
    return std::make_unique<LyricManagerWindow>(*m_delegate, std::make_unique<SystemDesktop>(),
                                                m_itunes);
}

std::unique_ptr<PreferencesPort> DesktopWindowFactory::createPreferences()
{
    return m_preferences ? m_preferences() : nullptr;
}

std::unique_ptr<NotificationPort> DesktopWindowFactory::createNotification()
{
    return m_delegate ? std::make_unique<NotificationPanel>(*m_delegate) : nullptr;
}

// Not modal: the lyric displays keep moving while it is open.
void DesktopWindowFactory::showAbout()
{
    if (!m_about) {
        m_about = std::make_unique<QMessageBox>();
        m_about->setWindowTitle(QCoreApplication::translate("DesktopWindowFactory", "About %1")
                                    .arg(QStringLiteral("Versewick")));
        m_about->setIconPixmap(AppIcon::icon().pixmap(64, 64));
        m_about->setTextFormat(Qt::RichText);
        m_about->setStandardButtons(QMessageBox::Close);
    }
    m_about->setText(
        QCoreApplication::translate(
            "DesktopWindowFactory",
            "<b>Versewick %1</b><p>Lyrics in time with the music you play.</p><p>%2</p>")
            .arg(QCoreApplication::applicationVersion(), m_addresses.helpPage().toHtmlEscaped()));
    m_about->show();
    m_about->raise();
    m_about->activateWindow();
}

void DesktopWindowFactory::showLyricEditor()
{
    if (m_delegate)
        openEditor(lyricediting::initialText(*m_delegate));
}

void DesktopWindowFactory::showLyricEditorWith(const QString& text)
{
    openEditor(text);
}

// One editor, opened afresh on a text and the song playing each time it is asked for.
void DesktopWindowFactory::openEditor(const QString& text)
{
    if (!m_delegate)
        return;
    AppDelegate& delegate = *m_delegate;
    QPointer<AppDelegate> owner(&delegate);
    if (!m_editor) {
        LyricEditorWindow::Host host;
        host.playTime = [owner, clock = std::make_shared<PlayClock>()] {
            return owner ? lyricediting::playTime(*owner, *clock) : 0.0;
        };
        host.seek = [owner](double s, std::function<void(bool)> done) {
            if (owner)
                lyricediting::seek(*owner, s, std::move(done));
            else
                done(false);
        };
        host.save = [owner, edited = m_edited](const QString& lrc) -> std::optional<QString> {
            if (!owner)
                return QString();
            return lyricediting::save(*owner, *edited, lrc);
        };
        host.song = [edited = m_edited]() -> std::optional<LrclibPublisher::Song> {
            if (!*edited)
                return std::nullopt;
            const PlayerSong& song = (*edited)->shown;
            return LrclibPublisher::Song{song.title,    song.artist, song.album,
                                         song.duration, {},          {}};
        };
        m_editor = std::make_unique<LyricEditorWindow>(std::move(host));
    }
    // Saving and publishing act on this song, whatever plays when they are asked for.
    *m_edited = lyricediting::song(delegate);
    const auto& song = *m_edited;
    m_editor->open(text, song ? QStringLiteral("%1 - %2").arg(song->shown.title, song->shown.artist)
                              : QString());
    FrontWindow::present(m_editor.get());
}
