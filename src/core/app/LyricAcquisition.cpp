#include "app/LyricAcquisition.h"

#include "app/AppDelegate.h"
#include "app/AppTexts.h"
#include "app/DesktopPort.h"
#include "app/FollowedSource.h"
#include "app/LyricLookup.h"
#include "app/LyricViewPort.h"
#include "app/MenuState.h"
#include "app/PluginHost.h"
#include "app/SearchWindowPort.h"
#include "app/SourceLoop.h"
#include "app/WindowFactoryPort.h"
#include "audiofile/AudioFileLyrics.h"
#include "foundation/SystemLog.h"
#include "http/HttpForms.h"
#include "http/PLHttpClient.h"
#include "lyric/Lyric.h"
#include "settings/ServiceAddresses.h"
#include "settings/Settings.h"
#include "sources/JukoraControl.h"
#include "sources/MusicSourceKind.h"
#include "sources/MusicSourceQQMusic.h"
#include "store/LyricControl.h"

#include <QFile>

// The tag is read here (a player's scripting call); the rest of the lookup runs off the main
// thread.
void LyricAcquisition::fetchLRC(const LyricsTrack& track)
{
    d.m_loop->songChanging();
    d.m_menu->setInfo(apptext::tr(apptext::kFetching));
    lookup::Request request;
    request.tagText = track.lyrics();
    request.artist = track.artist();
    request.title = track.name();
    d.m_loop->lookUp(std::move(request));
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
    QString album;
    double duration = 0.0;
    if (d.m_musicSource == MusicSourceKindITunes && d.curTrackTunes) {
        album = d.curTrackTunes->album();
        duration = d.curTrackTunes->duration();
    } else if (d.m_musicSource == MusicSourceKindQQMusic && d.qqmusicControl &&
               d.qqmusicControl->track()) {
        album = d.qqmusicControl->track()->album();
    } else if (d.m_musicSource == MusicSourceKindMpris && d.m_followed && d.m_followed->track()) {
        album = d.m_followed->track()->album();
        duration = d.m_followed->duration();
    }
    d.m_plugin->search(artist, song, album, duration);
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
    const bool overwrite = source == AppState::Plugin;
    switch (d.m_musicSource) {
    case MusicSourceKindITunes:
        if (!d.curTrackTunes)
            return;
        if (toDisk)
            saveToFolder(lyric, d.curTrackTunes->artist(), d.curTrackTunes->name(), overwrite);
        if ((source == AppState::Folder || source == AppState::Plugin) &&
            settings.isSaveLRCtoTrackTags())
            saveToTrack(lyric);
        break;
    case MusicSourceKindJukora:
        if (toDisk)
            saveToFolder(lyric, d.m_loop->jukoraArtist(), d.m_loop->jukoraTitle(), overwrite);
        break;
    case MusicSourceKindMpris:
        if (toDisk && d.m_followed && d.m_followed->track())
            saveToFolder(lyric, d.m_followed->track()->artist(), d.m_followed->track()->title(),
                         overwrite);
        // An online lyric also goes into the audio file; writeLyric leaves a read-only file be.
        if (source == AppState::Plugin && settings.isSaveLRCtoTrackTags() && d.m_followed) {
            const QString path = d.m_followed->localFilePath();
            if (!path.isEmpty() && !AudioFileLyrics::writeLyric(path, lyric.contents()))
                foundation::systemLog(
                    QStringLiteral("could not write the lyric into \"%1\"").arg(path));
        }
        break;
    default: // QQMusic's songs are never saved
        break;
    }
}

void LyricAcquisition::forceWriteLyric(Lyric& lyric)
{
    const Settings& settings = d.m_env.settings;
    switch (d.m_musicSource) {
    case MusicSourceKindITunes:
        if (!d.curTrackTunes)
            return;
        if (settings.isSaveLRCtoDisk())
            saveToFolder(lyric, d.curTrackTunes->artist(), d.curTrackTunes->name(), true);
        if (settings.isSaveLRCtoTrackTags())
            saveToTrack(lyric);
        break;
    case MusicSourceKindJukora:
        if (settings.isSaveLRCtoDisk())
            saveToFolder(lyric, d.m_loop->jukoraArtist(), d.m_loop->jukoraTitle(), true);
        break;
    case MusicSourceKindMpris:
        if (settings.isSaveLRCtoDisk() && d.m_followed && d.m_followed->track())
            saveToFolder(lyric, d.m_followed->track()->artist(), d.m_followed->track()->title(),
                         true);
        break;
    default:
        break;
    }
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

void LyricAcquisition::saveToTrack(Lyric& lyric)
{
    d.lrcControl->writeLrcToTrack(lyric, *d.curTrackTunes, true, true);
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
    if (d.m_musicSource == MusicSourceKindITunes && d._itunesControl) {
        const auto track = d._itunesControl->currentTrack();
        if (!track || !track->enabled())
            return;
        d.searchWC->showFor(track->name(), track->artist());
    } else if (d.m_musicSource == MusicSourceKindJukora && d.DJControl) {
        const auto item = d.DJControl->item();
        if (!item)
            return;
        d.searchWC->showFor(item->title(), item->artist());
    } else if (d.m_musicSource == MusicSourceKindMpris && d.m_followed) {
        const TrackItem* track = d.m_followed->track();
        if (!track)
            return;
        d.searchWC->showFor(track->title(), track->artist());
    }
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
