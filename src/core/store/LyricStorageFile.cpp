#include "core/store/LyricStorageFile.h"

#include <QStringList>

std::optional<LyricStorageFile> LyricStorageFile::fileFromFileName(const QString& fileName)
{
    const qsizetype dot = fileName.lastIndexOf(u'.');
    if (dot < 0 || fileName.mid(dot + 1).toLower() != QLatin1String("lrc"))
        return std::nullopt;
    const QStringList pieces = fileName.left(dot).split(QStringLiteral("--"));
    if (pieces.size() < 2)
        return std::nullopt;
    return LyricStorageFile{pieces.first(), pieces.last(), fileName};
}
