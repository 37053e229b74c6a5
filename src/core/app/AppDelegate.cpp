#include "core/app/AppDelegate.h"

#include "core/app/ITunesPlayerSource.h"
#include "core/app/JukoraPlayerSource.h"
#include "core/app/LyricAcquisition.h"
#include "core/app/LyricManagerPort.h"
#include "core/app/MenuState.h"
#include "core/app/MprisPlayerSource.h"
#include "core/app/NotificationPort.h"
#include "core/app/PluginHost.h"
#include "core/app/PreferencesPort.h"
#include "core/app/QQMusicPlayerSource.h"
#include "core/app/SearchWindowPort.h"
#include "core/app/SingleLinePort.h"
#include "core/app/SourceLoop.h"
#include "core/app/SyncControls.h"
#include "core/app/WindowFactoryPort.h"
#include "core/foundation/SystemLog.h"
#include "core/lyric/Lyric.h"
#include "core/settings/Settings.h"
#include "core/store/LyricControl.h"

#include <QPointer>
#include <QUrl>

namespace {
QPointer<AppDelegate> gController;
}

AppDelegate* AppDelegate::s()
{
    return gController;
}

// The composition of the controller: each collaborator gets what it uses, and their signals
// carry a song change one way: player -> SourceLoop -> LyricAcquisition (-> PluginHost) ->
// the displays.
AppDelegate::AppDelegate(AppEnvironment environment, AppPorts ports, QObject* parent)
    : QObject(parent)
    , m_env(std::move(environment))
    , m_ports(ports)
{
    auto store = [this] { return lrcControl.get(); };
    m_menu = std::make_unique<MenuState>(
        m_env.settings, m_state, m_ports,
        MenuState::Makers{[this]() -> std::unique_ptr<NotificationPort> {
                              return m_ports.windows ? m_ports.windows->createNotification()
                                                     : nullptr;
                          },
                          store});
    m_plugin = std::make_unique<PluginHost>(
        m_env.settings, m_state, PluginHost::Loading{m_env.bundles, m_env.loader}, *this);
    m_acquisition = std::make_unique<LyricAcquisition>(
        m_env.settings, m_env.addresses, m_state, m_shown, *m_plugin,
        LyricAcquisition::Context{m_ports, m_env.network, this,
                                  [this]() -> std::unique_ptr<SearchWindowPort> {
                                      return m_ports.windows ? m_ports.windows->createSearchWindow()
                                                             : nullptr;
                                  },
                                  store});
    m_loop = std::make_unique<SourceLoop>(m_state, m_shown, m_env.settings, *m_acquisition,
                                          m_env.timers);

    connect(m_loop.get(), &SourceLoop::playerChosen, m_acquisition.get(),
            &LyricAcquisition::setPlayer);
    connect(m_loop.get(), &SourceLoop::songChanging, m_plugin.get(), &PluginHost::songChanging);
    connect(m_loop.get(), &SourceLoop::songAnnounced, m_menu.get(),
            &MenuState::showSongNotification);
    connect(m_acquisition.get(), &LyricAcquisition::lyricInstalled, m_loop.get(),
            &SourceLoop::lyricInstalled);
    connect(m_acquisition.get(), &LyricAcquisition::lyricPickedByHand, m_menu.get(),
            &MenuState::reloadLyricView);
    connect(m_loop.get(), &SourceLoop::statusChanged, m_menu.get(), &MenuState::setInfo);
    connect(m_loop.get(), &SourceLoop::lookupAnswered, this, &AppDelegate::lookupAnswered);
    connect(m_acquisition.get(), &LyricAcquisition::statusChanged, m_menu.get(),
            &MenuState::setInfo);
    connect(m_plugin.get(), &PluginHost::statusChanged, m_menu.get(), &MenuState::setInfo);
    m_sync = new SyncControls({m_state, m_shown, [this] { return activePlayer(); },
                               [this] { return lrcControl.get(); }, [this] { update(); }},
                              this);
    connect(m_acquisition.get(), &LyricAcquisition::lyricInstalled, this,
            [this] { m_state.setOffset(m_shown.parser ? m_shown.parser->offsetTime() : 0.0); });
    gController = this;
}

AppDelegate::~AppDelegate()
{
    // The loop first: no tick, lookup answer or player notice reaches the others any more.
    m_loop.reset();
    m_acquisition.reset(); // the upload, the search window
    m_followed = nullptr;
    m_itunes.reset();
    m_mpris.reset();
    m_jukora.reset();
    m_qqmusic.reset();
    m_menu.reset(); // its windows
    m_plugin.reset();
    lrcControl.reset();
    m_shown.parser.reset();
}

void AppDelegate::awakeFromNib()
{
    lrcControl = std::make_unique<LyricControl>();
    lrcControl->setDelegate(this);
    m_shown.available = false;
    m_menu->setModeItems();
}

void AppDelegate::applicationDidFinishLaunching()
{
    if (!lrcControl)
        awakeFromNib();
    if (m_ports.windows)
        m_ports.windows->activateApplication();
    // Registering reports each player's state at once, so the source is chosen already here.
    // Priority: QQMusic, Jukora, iTunes, then the last slot's player.
    m_jukora = std::make_unique<JukoraPlayerSource>(m_env.workspace, m_env.center);
    m_loop->addSource(*m_jukora, 1);
    m_jukora->connectPlayer();
    m_qqmusic = std::make_unique<QQMusicPlayerSource>(m_env.workspace, m_env.center);
    m_loop->addSource(*m_qqmusic, 0);
    m_qqmusic->connectPlayer();
    if (m_followed) {
        m_loop->addSource(*m_followed, 3);
    } else if (m_env.followMpris) {
        m_mpris = std::make_unique<MprisPlayerSource>(m_env.workspace);
        m_followed = m_mpris.get();
        m_loop->addSource(*m_mpris, 3);
        m_mpris->connectPlayer();
    }
    m_itunes = std::make_unique<ITunesPlayerSource>(m_env.itunes);
    m_loop->addSource(*m_itunes, 2);
    // Kept when a search at registration already installed one: the view may hold it.
    if (!m_shown.parser)
        m_shown.parser = std::make_unique<Lyric>();
    m_plugin->install();
    if (m_ports.singleLineControl)
        m_ports.singleLineControl->loadWindow();
    m_menu->startHidden();
    toggleLyricsWindow();
    updateMusicSource();
    // The launch page view is recorded in the log; nothing is sent.
    foundation::systemLog(
        QStringLiteral("page view %1 (tracker %2, not sent)")
            .arg(QString::fromLatin1(QUrl::toPercentEncoding(QStringLiteral("/launch"), "/")),
                 QLatin1String(kTrackerAccount)));
}

void AppDelegate::applicationWillTerminate()
{
    m_env.settings.synchronize();
}

void AppDelegate::update()
{
    m_loop->update();
}
void AppDelegate::activeTimer()
{
    m_loop->activeTimer();
}
void AppDelegate::deactiveTimer()
{
    m_loop->deactiveTimer();
}
// The sources' operations, each a thin call into the loop for its player.
void AppDelegate::updateAppItunes()
{
    m_loop->tick(m_itunes.get());
}
void AppDelegate::updateAppQQMusic()
{
    m_loop->tick(m_qqmusic.get());
}
void AppDelegate::updateAppJukora()
{
    m_loop->tick(m_jukora.get());
}
void AppDelegate::updateMusicSource()
{
    m_loop->updateMusicSource();
}
void AppDelegate::djSongChanged()
{
    m_loop->songNotice(m_jukora.get());
}
void AppDelegate::djAppStateChanged()
{
    updateMusicSource();
}
void AppDelegate::qqmusicSongChanged()
{
    m_loop->songNotice(m_qqmusic.get());
}
void AppDelegate::mprisSongChanged()
{
    m_loop->songNotice(m_followed);
}

void AppDelegate::iTunesCB_AppLifeCycleChanged(bool alive)
{
    if (m_itunes)
        m_itunes->iTunesCB_AppLifeCycleChanged(alive);
}

void AppDelegate::iTunesCB_TrackDidChange(const std::optional<itunes::Track>& track)
{
    if (m_itunes)
        m_itunes->iTunesCB_TrackDidChange(track);
}

int AppDelegate::musicSource() const
{
    const PlayerSource* active = activePlayer();
    return active ? active->kind() : 0;
}

PlayerSource* AppDelegate::activePlayer() const
{
    return m_loop ? m_loop->active() : nullptr;
}

JukoraControl* AppDelegate::djControl() const
{
    return m_jukora ? &m_jukora->control() : nullptr;
}

MusicSourceQQMusic* AppDelegate::qqmusic() const
{
    return m_qqmusic ? &m_qqmusic->control() : nullptr;
}

bool AppDelegate::isLrcWindowVisible() const
{
    return m_menu->isLrcWindowVisible();
}

bool AppDelegate::timerRunning() const
{
    return m_loop && m_loop->timerRunning();
}

QObject* AppDelegate::lrcFetcher() const
{
    return m_plugin ? m_plugin->fetcher() : nullptr;
}

qint64 AppDelegate::curDBid() const
{
    return m_itunes ? m_itunes->databaseID() : -1;
}

void AppDelegate::fetchLRC(const itunes::Track& track)
{
    m_loop->fetchLRC(track);
}

void AppDelegate::controlLrcFetched(LyricControl& /*control*/, std::unique_ptr<Lyric> lyric,
                                    int source)
{
    m_acquisition->installStored(std::move(lyric), source);
}

void AppDelegate::controlLrcFetchFailed(LyricControl& control, const QString* /*error*/,
                                        int /*type*/)
{
    m_acquisition->storeMissed(control.artist(), control.song());
}

void AppDelegate::lyricsListFetched(const QVariantList& items)
{
    if (m_plugin->acceptList(items))
        m_acquisition->listFetched(items);
}

void AppDelegate::lyricsListFetchFailed(const QString& /*error*/)
{
    if (m_plugin->acceptListFailure())
        m_acquisition->notAvailable();
}

void AppDelegate::lyricsContentFetched(const QString& lrcText, const QVariant& item)
{
    if (m_plugin->acceptContent(lrcText))
        m_acquisition->contentFetched(lrcText, item);
}

void AppDelegate::lyricsContentFetchFailed(const QString& /*error*/)
{
    if (m_plugin->acceptContentFailure())
        m_acquisition->notAvailable();
}

void AppDelegate::lrcFetched(Lyric& lyric, int source)
{
    m_acquisition->lrcFetched(lyric, source);
}
QString AppDelegate::plainLyricText() const
{
    return m_acquisition ? m_acquisition->plainText() : QString();
}

void AppDelegate::forceWriteLyric(Lyric& lyric)
{
    m_acquisition->forceWriteLyric(lyric);
}
void AppDelegate::showSearchWindow()
{
    m_acquisition->showSearchWindow();
}
void AppDelegate::setupLRCcontent(const QString& text)
{
    m_acquisition->setupLRCcontent(text);
}

void AppDelegate::installEditedLyric(const QString& text)
{
    m_acquisition->installEdited(text);
}

void AppDelegate::toggleLyricsWindow()
{
    m_menu->toggleLyricsWindow();
}
void AppDelegate::showMainWindow()
{
    m_menu->showMainWindow();
}
void AppDelegate::hideMainWindow()
{
    m_menu->hideMainWindow();
}
void AppDelegate::changeLrcMode(StatusMenuItem sender)
{
    m_menu->changeLrcMode(sender);
}
void AppDelegate::changeLrcModeTo(int mode)
{
    m_menu->changeLrcModeTo(mode);
}
void AppDelegate::showPreferencePanel()
{
    m_menu->showPreferencePanel();
}
void AppDelegate::showAbout()
{
    m_menu->showAbout();
}
void AppDelegate::showLyricManager()
{
    m_menu->showLyricManager();
}
void AppDelegate::showLyricEditor()
{
    if (m_ports.windows)
        m_ports.windows->showLyricEditor();
}
void AppDelegate::showLyricEditorWith(const QString& text)
{
    if (m_ports.windows)
        m_ports.windows->showLyricEditorWith(text);
}
LyricManagerPort* AppDelegate::lyricManagerWC()
{
    return m_menu->lyricManagerWC();
}
void AppDelegate::notificationCanBeRemoved()
{
    m_menu->notificationCanBeRemoved();
}
void AppDelegate::setInfo(const QString& info)
{
    m_menu->setInfo(info);
}
void AppDelegate::reloadLyricView()
{
    m_menu->reloadLyricView();
}

QStringList AppDelegate::allBundles() const
{
    return m_plugin->allBundles();
}
std::unique_ptr<QObject> AppDelegate::loadLyricPlugin()
{
    return m_plugin->loadLyricPlugin();
}
