#include "core/app/LyricAcquisition.h"

#include "core/app/AppState.h"
#include "core/app/AppTexts.h"
#include "core/app/DesktopPort.h"
#include "core/app/PlainLyric.h"
#include "core/app/PlayerSource.h"
#include "core/app/PluginHost.h"
#include "core/app/SearchWindowPort.h"
#include "core/app/ShownLyric.h"
#include "core/foundation/SystemLog.h"
#include "core/http/HttpForms.h"
#include "core/http/PLHttpClient.h"
#include "core/lyric/Lyric.h"
#include "core/settings/ServiceAddresses.h"
#include "core/settings/Settings.h"
#include "core/store/LyricControl.h"

#include <QFile>

LyricAcquisition::LyricAcquisition(Settings& settings, ServiceAddresses& addresses, AppState& state,
                                   ShownLyric& shown, PluginHost& plugin, Context context)
    : m_settings(settings)
    , m_addresses(addresses)
    , m_state(state)
    , m_shown(shown)
    , m_plugin(plugin)
    , m_context(std::move(context))
{
    // Without a lyric there is nothing unsynced.
    connect(&m_state, &AppState::changed, this, [this](const QString& name, const QVariant& v) {
        if (name == QLatin1String("LyricLoaded") && !v.toBool())
            m_state.setSynced(true);
    });
}

LyricAcquisition::~LyricAcquisition()
{
    if (m_poster)
        m_poster->cleanBeforeRelease();
}

// A stored lyric replaces the document.
void LyricAcquisition::installStored(std::unique_ptr<Lyric> lyric, int source)
{
    if (!lyric)
        return;
    if (lyric.get() != m_shown.parser.get())
        m_shown.parser = std::move(lyric);
    installed(source);
    lrcFetched(*m_shown.parser, source);
}

void LyricAcquisition::installed(int origin, bool synced)
{
    m_state.setSynced(synced);
    m_plainShown = !synced;
    m_shown.available = true;
    Q_EMIT statusChanged({});
    m_state.showLyric(m_shown.parser.get());
    m_state.setLyricOrigin(origin);
    m_state.setLyricLoaded(true);
    Q_EMIT lyricInstalled(origin);
}

void LyricAcquisition::storeMissed(const QString& artist, const QString& song)
{
    // What the source knows beyond the names goes to a plug-in that can use it.
    const PlayerSong details = m_player ? m_player->searchDetails() : PlayerSong{};
    m_plugin.search(artist, song, details.album, details.duration,
                    m_player && m_player->rules().coalesced);
}

void LyricAcquisition::notAvailable()
{
    Q_EMIT statusChanged(apptext::tr(apptext::kNotAvailable));
}

void LyricAcquisition::listFetched(const QVariantList& items)
{
    if (items.isEmpty()) {
        notAvailable();
        return;
    }
    // The first result: the plug-in orders them. One that does not fit the song is not taken;
    // an unsynced one is shown as it came, without a download.
    const auto pick = plainlyric::pickCandidate(items);
    if (!pick || pick->plain)
        m_plugin.listSettled();
    if (!pick)
        notAvailable();
    else if (pick->plain)
        installPlain(pick->plainText);
    else
        m_plugin.download(pick->item);
}

// Shown unlit and marked unsynced; never saved nor shared, so it cannot pass for a synced one.
void LyricAcquisition::installPlain(const QString& text)
{
    m_shown.parser = plainlyric::lyricFromPlainText(text);
    installed(AppState::Plugin, false);
    Q_EMIT statusChanged(apptext::tr(apptext::kUnsynced));
}

QString LyricAcquisition::plainText() const
{
    return m_plainShown && !m_state.synced() && m_shown.parser ? m_shown.parser->contents()
                                                               : QString();
}

// An online lyric re-parses the document in place.
void LyricAcquisition::contentFetched(const QString& text, const QVariant& item)
{
    m_shown.parser->parseLRCcontent(text);
    installed(AppState::Plugin);
    lrcFetched(*m_shown.parser, AppState::Plugin);
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
    if (!m_poster)
        m_poster = std::make_unique<PLHttpClient>(m_context.httpDelegate, m_context.network);
    // Plain http, no Content-Type; the answer is ignored and a failure is not retried.
    const QUrl url(QStringLiteral("http://%1/lyrics").arg(m_addresses.lyricSharingHost()));
    m_poster->post(url, uploadBody(artist, content, title));
}

void LyricAcquisition::lrcFetched(Lyric& lyric, int source)
{
    const Settings& settings = m_settings;
    const bool toDisk =
        (source == AppState::TrackTag || source == AppState::Plugin) && settings.isSaveLRCtoDisk();
    save(lyric, source, toDisk, source == AppState::Plugin);
}

void LyricAcquisition::forceWriteLyric(Lyric& lyric)
{
    save(lyric, AppState::ByHand, m_settings.isSaveLRCtoDisk(), true);
}

// The followed player's save rules: the names it is kept under in the folder, and whether a
// lyric of this origin also goes into the song itself.
void LyricAcquisition::save(Lyric& lyric, int origin, bool toDisk, bool overwrite)
{
    LyricControl* store = m_context.store ? m_context.store() : nullptr;
    if (!m_player || !store || (m_plainShown && &lyric == m_shown.parser.get()))
        return;
    if (toDisk) {
        if (const auto names = m_player->savedNames())
            saveToFolder(*store, lyric, names->artist, names->title, overwrite);
    }
    if (m_settings.isSaveLRCtoTrackTags() && m_player->writesIntoSong(origin))
        m_player->writeIntoSong(lyric, *store);
}

void LyricAcquisition::saveToFolder(LyricControl& store, const Lyric& lyric, const QString& artist,
                                    const QString& title, bool overwrite)
{
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
    if (!m_plugin.fetcher()) {
        if (m_context.ports.desktop)
            m_context.ports.desktop->openUrl(QUrl(m_addresses.helpPage()));
        return;
    }
    if (!m_searchWC && m_context.searchWindow)
        m_searchWC = m_context.searchWindow();
    if (!m_searchWC)
        return;
    if (const auto song = m_player ? m_player->searchWindowSong() : std::nullopt)
        m_searchWC->showFor(song->title, song->artist, song->duration);
}

void LyricAcquisition::installEdited(const QString& text)
{
    auto lyric = std::make_unique<Lyric>();
    lyric->parseLRCcontent(text);
    m_state.showLyric(lyric.get()); // the displays leave the old document before it goes
    m_shown.parser = std::move(lyric);
    setupLRCcontent(text);
}

// A pick by hand is stored by the save settings but never shared.
void LyricAcquisition::setupLRCcontent(const QString& text)
{
    if (!m_shown.parser)
        m_shown.parser = std::make_unique<Lyric>();
    m_shown.parser->parseLRCcontent(text);
    m_shown.available = true;
    Q_EMIT statusChanged({}); // an "unsynced lyric" or "not available" is over
    m_state.setSynced(true);
    m_plainShown = false;
    m_state.setLyricOrigin(AppState::ByHand);
    m_state.setLyricLoaded(true);
    Q_EMIT lyricInstalled(AppState::ByHand);
    forceWriteLyric(*m_shown.parser);
    Q_EMIT lyricPickedByHand();
}
