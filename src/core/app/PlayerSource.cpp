#include "core/app/PlayerSource.h"

#include <QFileInfo>

QString PlayerSong::shownTitle() const
{
    return title.isEmpty() && !localFile.isEmpty() ? QFileInfo(localFile).completeBaseName()
                                                   : title;
}
