#include "core/app/LyricPluginLoader.h"

#include "core/app/LrcFetcherProtocol.h"
#include "core/foundation/SystemLog.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QPluginLoader>
#include <QStandardPaths>

#include <algorithm>

namespace {

QStringList sortedEntries(const QString& folder)
{
    QStringList names = QDir(folder).entryList(
        QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System, QDir::Unsorted);
    // Plain code-unit order: QDir's name sort may depend on the locale.
    std::sort(names.begin(), names.end());
    return names;
}

void walk(const QString& folder, QStringList& found)
{
    for (const QString& name : sortedEntries(folder)) {
        const QString path = folder + u'/' + name;
        const QFileInfo info(path);
        if (info.suffix() == QLatin1String("bundle"))
            found.append(path);
        if (info.isDir() && !info.isSymLink())
            walk(path, found);
    }
}

void skip(const QString& bundle, const QString& reason)
{
    foundation::systemLog(QStringLiteral("error on load lyric plug-in %1: %2").arg(bundle, reason));
}

} // namespace

QStringList LyricPluginLoader::searchFolders()
{
    // A build tree has its CMakeCache.txt one level above bin/; installed, the plug-ins lie in
    // lib/versewick/plugins beside bin/.
    const QDir bin(QCoreApplication::applicationDirPath());
    const bool buildTree = QFileInfo::exists(bin.filePath(QStringLiteral("../CMakeCache.txt")));
    QStringList folders{QDir::cleanPath(bin.filePath(
        buildTree ? QStringLiteral("../plugins") : QStringLiteral("../lib/versewick/plugins")))};
    for (const QString& root :
         QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation))
        folders.append(root + QStringLiteral("/Versewick/PlugIns"));
    return folders;
}

QStringList LyricPluginLoader::allBundles(const QStringList& folders)
{
    QStringList found;
    for (const QString& folder : folders) {
        if (QFileInfo(folder).isDir())
            walk(QDir::cleanPath(folder), found);
    }
    return found;
}

QString LyricPluginLoader::libraryInBundle(const QString& bundle)
{
    if (!QFileInfo(bundle).isDir())
        return {};
    for (const QString& name : sortedEntries(bundle)) {
        const QString path = bundle + u'/' + name;
        if (QLibrary::isLibrary(name) && QFileInfo(path).isFile())
            return path;
    }
    return {};
}

LyricPluginLoader::Loaded LyricPluginLoader::loadLyricPlugin(const QStringList& bundles)
{
    Loaded kept;
    for (const QString& bundle : bundles) {
        const QString library = libraryInBundle(bundle);
        if (library.isEmpty()) {
            skip(bundle, QStringLiteral("no library in the bundle"));
            continue;
        }
        // The loader object may go: the library stays loaded and its root object alive.
        QPluginLoader loader(library);
        QObject* root = loader.instance();
        if (!root) {
            skip(bundle, loader.errorString());
            continue;
        }
        if (!lrcfetcher::answers(root, lrcfetcher::kInstance)) {
            skip(bundle, QStringLiteral("the plug-in has no instance()"));
            continue;
        }
        QObject* object = nullptr;
        QMetaObject::invokeMethod(root, "instance", Qt::DirectConnection,
                                  Q_RETURN_ARG(QObject*, object));
        if (!object) {
            skip(bundle, QStringLiteral("instance() gave nothing"));
            continue;
        }
        object->setParent(nullptr);
        QString name;
        qint64 version = 0;
        if (lrcfetcher::answers(root, lrcfetcher::kName))
            QMetaObject::invokeMethod(root, "name", Qt::DirectConnection,
                                      Q_RETURN_ARG(QString, name));
        if (lrcfetcher::answers(root, lrcfetcher::kVersion))
            QMetaObject::invokeMethod(root, "version", Qt::DirectConnection,
                                      Q_RETURN_ARG(qint64, version));
        // The one found before is dropped: the last plug-in found is the one used.
        kept.fetcher.reset(object);
        kept.info = QStringLiteral("%1 v(%2)")
                        .arg(name.isNull() ? QStringLiteral("(null)") : name)
                        .arg(version);
    }
    return kept;
}
