#include "app/AppDelegate.h"

#include "app/LyricAcquisition.h"
#include "app/LyricManagerPort.h"
#include "app/MenuState.h"
#include "app/MprisFollowedSource.h"
#include "app/NotificationPort.h"
#include "app/PluginHost.h"
#include "app/PreferencesPort.h"
#include "app/SearchWindowPort.h"
#include "app/SingleLinePort.h"
#include "app/SourceLoop.h"
#include "app/WindowFactoryPort.h"
#include "foundation/SystemLog.h"
#include "http/PLHttpClient.h"
#include "lyric/Lyric.h"
#include "settings/Settings.h"
#include "sources/JukoraControl.h"
#include "sources/MusicSourceQQMusic.h"
#include "store/LyricControl.h"

#include <QPointer>
#include <QUrl>

namespace {
QPointer<AppDelegate> gController;
}

AppDelegate* AppDelegate::s()
{
    return gController;
}

AppDelegate::AppDelegate(AppEnvironment environment, AppPorts ports, QObject* parent)
    : QObject(parent)
    , m_env(std::move(environment))
    , m_ports(ports)
    , m_loop(std::make_unique<SourceLoop>(*this))
    , m_acquisition(std::make_unique<LyricAcquisition>(*this))
    , m_plugin(std::make_unique<PluginHost>(*this))
    , m_menu(std::make_unique<MenuState>(*this))
{
    gController = this;
}

AppDelegate::~AppDelegate()
{
    m_loop->deactiveTimer();
    if (hcLrcPoster)
        hcLrcPoster->cleanBeforeRelease();
    hcLrcPoster.reset();
    if (_itunesControl && _itunesControl->delegate() == this)
        _itunesControl->setDelegate(nullptr);
    if (m_followed == m_mpris.get())
        m_followed = nullptr;
    m_mpris.reset();
    DJControl.reset();
    qqmusicControl.reset();
    _lyricManagerWC.reset();
    hcLRCfetcher.reset();
    _notifyWC.reset();
    lrcControl.reset();
    preferenceController.reset();
    searchWC.reset();
    parser.reset();
    curTrackTunes.reset();
}

void AppDelegate::awakeFromNib()
{
    m_musicSource = 0;
    lrcControl = std::make_unique<LyricControl>();
    lrcControl->setDelegate(this);
    _lrcAvailable = false;
    m_menu->setModeItems();
}

void AppDelegate::applicationDidFinishLaunching()
{
    if (!lrcControl)
        awakeFromNib();
    if (m_ports.windows)
        m_ports.windows->activateApplication();
    // Registering reports each player's state at once, so the source is chosen already here.
    DJControl = std::make_unique<JukoraControl>(m_env.workspace, m_env.center);
    DJControl->setCallBack(this, "djSongChanged", "djAppStateChanged");
    qqmusicControl = std::make_unique<MusicSourceQQMusic>(m_env.workspace, m_env.center);
    qqmusicControl->setCallBack(this, "qqmusicSongChanged", "updateMusicSource");
    if (!m_followed && m_env.followMpris) {
        m_mpris = std::make_unique<MprisFollowedSource>(m_env.workspace);
        m_followed = m_mpris.get();
        m_mpris->connectTo(this);
    }
    _itunesControl = &m_env.itunes;
    _itunesControl->setDelegate(this);
    curTrackTunes = _itunesControl->currentTrack();
    m_curDBid = -1;
    // Kept when a search at registration already installed one: the view may hold it.
    if (!parser)
        parser = std::make_unique<Lyric>();
    m_plugin->install();
    shouldUpdateLRC = false;
    if (m_ports.singleLineControl)
        m_ports.singleLineControl->loadWindow();
    _isLrcWindowVisible = false;
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
void AppDelegate::updateAppItunes()
{
    m_loop->updateAppItunes();
}
void AppDelegate::updateAppQQMusic()
{
    m_loop->updateAppQQMusic();
}
void AppDelegate::updateAppJukora()
{
    m_loop->updateAppJukora();
}
void AppDelegate::updateMusicSource()
{
    m_loop->updateMusicSource();
}
void AppDelegate::djSongChanged()
{
    m_loop->djSongChanged();
}
void AppDelegate::djAppStateChanged()
{
    updateMusicSource();
}
void AppDelegate::qqmusicSongChanged()
{
    m_loop->qqmusicSongChanged();
}
void AppDelegate::mprisSongChanged()
{
    m_loop->followedSongChanged();
}

void AppDelegate::iTunesCB_AppLifeCycleChanged(bool /*alive*/)
{
    updateMusicSource();
}

void AppDelegate::iTunesCB_TrackDidChange(const std::optional<itunes::Track>& track)
{
    const bool exists = track && track->exists();
    m_loop->iTunesTrackDidChange(exists, exists ? track->databaseID() : -1);
}

void AppDelegate::fetchLRC(const itunes::Track& track)
{
    m_acquisition->fetchLRC(track);
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
    if (!parser)
        parser = std::make_unique<Lyric>();
    m_acquisition->setupLRCcontent(text);
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
void AppDelegate::changeLrcMode(StatusMenuPort::Item sender)
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
