#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

// Temporary stand-in until the plug-in loader lands.
class LyricPluginLoader {
public:
    static QStringList searchFolders();
    static QStringList allBundles(const QStringList& folders);
    struct Loaded {
        std::unique_ptr<QObject> fetcher;
        QString info;
    };
    static Loaded loadLyricPlugin(const QStringList& bundles);
};
