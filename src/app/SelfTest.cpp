#include "SelfTest.h"

#include "core/app/LyricPluginLoader.h"
#include "core/foundation/Translations.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>

int runSelfTest(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    // Only the built-in folder: a plug-in the user added must not hide a missing one.
    const QString builtIn = LyricPluginLoader::searchFolders().value(0);
    const LyricPluginLoader::Loaded plugin =
        LyricPluginLoader::loadLyricPlugin(LyricPluginLoader::allBundles({builtIn}));
    const bool pluginFound = plugin.fetcher != nullptr;
    out << "plug-in: " << (pluginFound ? plugin.info : QStringLiteral("none")) << " in " << builtIn
        << "\n";

    const bool translationFound = foundation::installTranslations(app, QLocale(QLocale::Chinese));
    QString folder;
    for (const QString& candidate : foundation::translationFolders()) {
        if (folder.isEmpty() &&
            QFileInfo::exists(candidate + QStringLiteral("/versewick_zh_CN.qm")))
            folder = candidate;
    }
    out << "translation zh_CN: " << (translationFound ? folder : QStringLiteral("none")) << "\n";
    out << (pluginFound && translationFound ? "self-test passed" : "self-test failed") << "\n";
    return pluginFound && translationFound ? 0 : 1;
}
