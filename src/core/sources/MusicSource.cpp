#include "core/sources/MusicSource.h"

MusicSource::MusicSource(QObject* parent)
    : QObject(parent)
{
}

TrackItem* MusicSource::track()
{
    return m_track.get();
}

float MusicSource::location()
{
    return m_location;
}
