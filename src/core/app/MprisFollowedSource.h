#pragma once

#include "app/FollowedSource.h"

#include <QString>

#include <memory>

class MusicSourceMpris;
class QObject;
class QSettings;
class Workspace;

// The MPRIS source in the controller's last-priority slot.
class MprisFollowedSource : public FollowedSource {
public:
    explicit MprisFollowedSource(Workspace& workspace);
    // Reads the ignore list from this store instead of the user's settings file.
    MprisFollowedSource(Workspace& workspace, QSettings& settings);
    ~MprisFollowedSource() override;

    // Registers the controller's callbacks (mprisSongChanged, updateMusicSource); the state
    // callback is sent at once, so call it once the controller can take it.
    void connectTo(QObject* controller);

    bool isRunning() const override;
    QString menuTitle() const override;
    const TrackItem* track() const override;
    float location() const override;
    double duration() const override;
    QString localFilePath() const override;

    MusicSourceMpris& source() const { return *m_source; }

private:
    std::unique_ptr<MusicSourceMpris> m_source;
};
