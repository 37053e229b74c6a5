#include "core/app/PlayerSource.h"

#include "core/app/PlayerSeek.h"

#include <QFileInfo>

QString PlayerSong::shownTitle() const
{
    return title.isEmpty() && !localFile.isEmpty() ? QFileInfo(localFile).completeBaseName()
                                                   : title;
}

void PlayerSource::seek(double /*seconds*/, std::function<void(bool)> done)
{
    playerseek::refuse(this, std::move(done));
}
