#include "app/LyricAcquisition.h"

#include "app/AppDelegate.h"
#include "app/AppTexts.h"
#include "app/DesktopPort.h"
#include "app/LyricViewPort.h"
#include "app/MenuState.h"
#include "app/PlayerSource.h"
#include "app/PluginHost.h"
#include "app/SearchWindowPort.h"
#include "app/SourceLoop.h"
#include "app/WindowFactoryPort.h"
#include "foundation/SystemLog.h"
#include "http/HttpForms.h"
#include "http/PLHttpClient.h"
#include "lyric/Lyric.h"
#include "settings/ServiceAddresses.h"
#include "settings/Settings.h"
#include "store/LyricControl.h"

#include <QFile>

// The tag is read here (a player's scripting call); the rest of the lookup runs off the main
// thread.
void LyricAcquisition::fetchLRC(const LyricsTrack& track)
{
    d.m_loop->songChanging();
    PlayerSong song;
    song.tagText = track.lyrics();
    song.artist = track.artist();
    song.title = track.name();
    d.m_loop->startSearch(song);
}

// A stored lyric replaces the document.
void LyricAcquisition::installStored(std::unique_ptr<Lyric> lyric, int source)
{
    if (!lyric)
        return;
    if (lyric.get() != d.parser.get())
        d.parser = std::move(lyric);
    installed(source);
    lrcFetched(*d.parser, source);
}

void LyricAcquisition::installed(int origin)
{
    d._lrcAvailable = true;
    d.m_menu->setInfo({});
    if (d.m_ports.appController)
        d.m_ports.appController->setParser(d.parser.get());
    d.m_loop->lyricInstalled();
    d.m_state.setLyricOrigin(origin);
    d.m_state.setLyricLoaded(true);
}

void LyricAcquisition::storeMissed(const QString& artist, const QString& song)
{
    // What the source knows beyond the names goes to a plug-in that can use it.
    PlayerSource* source = d.m_loop->active();
    const PlayerSong details = source ? source->searchDetails() : PlayerSong{};
    d.m_plugin->search(artist, song, details.album, details.duration);
}

void LyricAcquisition::notAvailable()
{
    d.m_menu->setInfo(apptext::tr(apptext::kNotAvailable));
}

void LyricAcquisition::listFetched(const QVariantList& items)
{
    if (items.isEmpty()) {
        notAvailable();
        return;
    }
    // The first result, always: the plug-in orders them.
    d.m_plugin->download(items.first());
}

// An online lyric re-parses the document in place.
void LyricAcquisition::contentFetched(const QString& text, const QVariant& item)
{
    d.parser->parseLRCcontent(text);
    installed(AppState::Plugin);
    lrcFetched(*d.parser, AppState::Plugin);
    const QVariantMap result = item.toMap();
    upload(result.value(QStringLiteral("artist")).toString(), text,
           result.value(QStringLiteral("title")).toString());
}

QString LyricAcquisition::uploadBody(const QString& artist, const QString& content,
                                     const QString& title)
{
    // One multi-argument arg(): a "%1" inside an escaped value is never replaced again.
    return QStringLiteral("lyric[artist]=%1&lyric[content]=%2&lyric[track]=%3")
        .arg(http::URLEscaped(artist), http::URLEscaped(content), http::URLEscaped(title));
}

void LyricAcquisition::upload(const QString& artist, const QString& content, const QString& title)
{
    if (!d.hcLrcPoster)
        d.hcLrcPoster = std::make_unique<PLHttpClient>(&d, d.m_env.network);
    // Plain http, no Content-Type; the answer is ignored and a failure is not retried.
    const QUrl url(QStringLiteral("http://%1/lyrics").arg(d.m_env.addresses.lyricSharingHost()));
    d.hcLrcPoster->post(url, uploadBody(artist, content, title));
}

void LyricAcquisition::lrcFetched(Lyric& lyric, int source)
{
    const Settings& settings = d.m_env.settings;
    const bool toDisk =
        (source == AppState::TrackTag || source == AppState::Plugin) && settings.isSaveLRCtoDisk();
    save(lyric, source, toDisk, source == AppState::Plugin);
}

void LyricAcquisition::forceWriteLyric(Lyric& lyric)
{
    save(lyric, AppState::ByHand, d.m_env.settings.isSaveLRCtoDisk(), true);
}

// The followed player's save rules: the names it is kept under in the folder, and whether a
// lyric of this origin also goes into the song itself.
void LyricAcquisition::save(Lyric& lyric, int origin, bool toDisk, bool overwrite)
{
    PlayerSource* player = d.m_loop->active();
    if (!player)
        return;
    if (toDisk) {
        if (const auto names = player->savedNames())
            saveToFolder(lyric, names->artist, names->title, overwrite);
    }
    if (d.m_env.settings.isSaveLRCtoTrackTags() && player->writesIntoSong(origin))
        player->writeIntoSong(lyric, *d.lrcControl);
}

void LyricAcquisition::saveToFolder(const Lyric& lyric, const QString& artist, const QString& title,
                                    bool overwrite)
{
    LyricControl& store = *d.lrcControl;
    const QString identify = store.identifyFromArtist(artist, title);
    const bool kept = !overwrite && store.readLrcByIdentify(identify);
    store.writeLrcAsIdentify(lyric, identify, overwrite);
    if (kept || artist.isEmpty() || title.isEmpty() || identify.contains(u'/') ||
        lyric.contents().trimmed().isEmpty())
        return; // nothing was to be written
    // The store fails quietly (and leaves the old file whole); say so once here.
    QFile written(LyricControl::_pathForIdentify(identify + QStringLiteral(".lrc")));
    if (!written.open(QIODevice::ReadOnly) || written.readAll() != lyric.contents().toUtf8())
        foundation::systemLog(QStringLiteral("could not save the lyric of \"%1\" in %2")
                                  .arg(identify, LyricControl::_pathLrcs()));
}

void LyricAcquisition::showSearchWindow()
{
    if (!d.isLyricPluginLoaded()) {
        if (d.m_ports.desktop)
            d.m_ports.desktop->openUrl(QUrl(d.m_env.addresses.helpPage()));
        return;
    }
    if (!d.searchWC && d.m_ports.windows)
        d.searchWC = d.m_ports.windows->createSearchWindow(d);
    if (!d.searchWC)
        return;
    PlayerSource* player = d.m_loop->active();
    if (const auto song = player ? player->searchWindowSong() : std::nullopt)
        d.searchWC->showFor(song->title, song->artist);
}

// A pick by hand is stored by the save settings but never shared.
void LyricAcquisition::setupLRCcontent(const QString& text)
{
    d.parser->parseLRCcontent(text);
    d._lrcAvailable = true;
    d.m_loop->lyricInstalled();
    d.m_state.setLyricOrigin(AppState::ByHand);
    d.m_state.setLyricLoaded(true);
    forceWriteLyric(*d.parser);
    d.reloadLyricView();
}
