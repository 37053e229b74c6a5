#include "app/LyricPluginLoader.h"

#include "app/LrcFetcherProtocol.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QLibrary>
#include <QPluginLoader>
#include <QStandardPaths>

QStringList LyricPluginLoader::searchFolders()
{
    QStringList folders{QCoreApplication::applicationDirPath() + QStringLiteral("/../plugins")};
    for (const QString& data :
         QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation))
        folders << data + QStringLiteral("/Versewick/PlugIns");
    return folders;
}

QStringList LyricPluginLoader::allBundles(const QStringList& folders)
{
    QStringList bundles;
    for (const QString& folder : folders) {
        QDirIterator it(folder, QDir::AllEntries | QDir::NoDotAndDotDot,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            if (it.fileInfo().suffix() == QLatin1String("bundle"))
                bundles << path;
        }
    }
    return bundles;
}

LyricPluginLoader::Loaded LyricPluginLoader::loadLyricPlugin(const QStringList& bundles)
{
    Loaded kept;
    for (const QString& bundle : bundles) {
        const QStringList libraries = QDir(bundle).entryList(QDir::Files);
        for (const QString& name : libraries) {
            if (!QLibrary::isLibrary(name))
                continue;
            QPluginLoader loader(QDir(bundle).filePath(name));
            QObject* root = loader.instance();
            if (!root || !lrcfetcher::answers(root, lrcfetcher::kInstance))
                continue;
            QObject* fetcher = nullptr;
            QString pluginName;
            qint64 version = 0;
            QMetaObject::invokeMethod(root, "instance", Q_RETURN_ARG(QObject*, fetcher));
            QMetaObject::invokeMethod(root, "name", Q_RETURN_ARG(QString, pluginName));
            QMetaObject::invokeMethod(root, "version", Q_RETURN_ARG(qint64, version));
            if (!fetcher)
                continue;
            fetcher->setParent(nullptr);
            kept.fetcher.reset(fetcher);
            kept.info = QStringLiteral("%1 v(%2)").arg(pluginName).arg(version);
            break;
        }
    }
    return kept;
}
