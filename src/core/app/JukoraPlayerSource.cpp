#include "core/app/JukoraPlayerSource.h"

#include "core/app/AppTexts.h"
#include "core/app/PlayerSeek.h"
#include "core/sources/JukoraControl.h"
#include "core/sources/MusicSourceKind.h"

JukoraPlayerSource::JukoraPlayerSource(Workspace& workspace, DistributedNotificationCenter& center,
                                       QObject* parent)
    : PlayerSource(parent)
    , m_control(std::make_unique<JukoraControl>(workspace, center))
{
}

JukoraPlayerSource::~JukoraPlayerSource() = default;

void JukoraPlayerSource::connectPlayer()
{
    m_control->setCallBack(this, "songChanged", "runningChanged");
}

int JukoraPlayerSource::kind() const
{
    return MusicSourceKindJukora;
}

bool JukoraPlayerSource::isRunning() const
{
    return m_control->isRunning();
}

QString JukoraPlayerSource::menuTitle() const
{
    return apptext::tr(apptext::kJukora);
}

QString JukoraPlayerSource::notPlayingText() const
{
    return apptext::tr(apptext::kJukoraNotPlaying);
}

PlayerSource::Change JukoraPlayerSource::readSongChange(PlayerSong& changed)
{
    m_control->setCachedItem(m_control->item());
    const auto& item = m_control->cachedItem();
    m_names.title = item ? item->title() : QString();
    m_names.artist = item ? item->artist() : QString();
    if (!item)
        return Change::NoSong;
    changed = m_names;
    return Change::Song;
}

std::optional<PlayerSong> JukoraPlayerSource::nowPlaying()
{
    if (!m_control->cachedItem())
        return std::nullopt;
    return m_names;
}

float JukoraPlayerSource::location()
{
    return m_control->location();
}

std::optional<PlayerSong> JukoraPlayerSource::searchWindowSong()
{
    const auto item = m_control->item();
    if (!item)
        return std::nullopt;
    PlayerSong song;
    song.title = item->title();
    song.artist = item->artist();
    return song;
}

std::optional<PlayerSong> JukoraPlayerSource::savedNames()
{
    return m_names;
}

void JukoraPlayerSource::seek(double seconds, std::function<void(bool)> done)
{
    playerseek::send(playerseek::setDouble(QLatin1String(jukora::kBusName), QStringLiteral("/"),
                                           QStringLiteral("com.morvane.Jukora.Application"),
                                           QStringLiteral("location"), seconds),
                     this, std::move(done));
}
