#include "core/foundation/AppPaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace foundation {

QString resourcePath(const QString& name)
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() +
                           QStringLiteral("/../share/versewick/") + name);
}

QString userLibraryPath()
{
    const QStringList roots =
        QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    return roots.isEmpty() ? QDir::homePath() : roots.first();
}

bool copyRecursively(const QString& from, const QString& to)
{
    const QFileInfo source(from);
    if (!source.exists())
        return false;
    if (!source.isDir() || source.isSymLink())
        return QFile::copy(from, to);
    if (!QDir().mkpath(to))
        return false;
    bool ok = true;
    const QDir dir(from);
    for (const QString& entry :
         dir.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System))
        ok = copyRecursively(dir.filePath(entry), to + u'/' + entry) && ok;
    return ok;
}

bool removeRecursively(const QString& path)
{
    const QFileInfo info(path);
    if (info.isSymLink() || (info.exists() && !info.isDir()))
        return QFile::remove(path);
    if (!info.exists())
        return true;
    return QDir(path).removeRecursively();
}

} // namespace foundation
