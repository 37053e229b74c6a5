#include "app/MprisFollowedSource.h"

#include "sources/MusicSourceMpris.h"

MprisFollowedSource::MprisFollowedSource(Workspace& workspace)
    : m_source(std::make_unique<MusicSourceMpris>(workspace))
{
}

MprisFollowedSource::MprisFollowedSource(Workspace& workspace, QSettings& settings)
    : m_source(std::make_unique<MusicSourceMpris>(workspace, settings))
{
}

MprisFollowedSource::~MprisFollowedSource() = default;

void MprisFollowedSource::connectTo(QObject* controller)
{
    m_source->setCallBack(controller, "mprisSongChanged", "updateMusicSource");
}

bool MprisFollowedSource::isRunning() const
{
    return m_source->isRunning();
}

QString MprisFollowedSource::menuTitle() const
{
    return m_source->name();
}

const TrackItem* MprisFollowedSource::track() const
{
    return m_source->track();
}

float MprisFollowedSource::location() const
{
    return m_source->location();
}

double MprisFollowedSource::duration() const
{
    return m_source->song().lengthSeconds();
}

QString MprisFollowedSource::localFilePath() const
{
    return m_source->song().localFilePath();
}
