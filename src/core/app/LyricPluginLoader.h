#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

// Finds lyric plug-in bundles and loads them (the contract is in app/LrcFetcherProtocol.h).
// Every bundle found is loaded and every plug-in instantiated; the last one wins.
class LyricPluginLoader {
public:
    // The built-in folder (<prefix>/lib/versewick/plugins installed, <build>/plugins in a build
    // tree), then "<data location>/Versewick/PlugIns" for every generic data location
    // (XDG_DATA_HOME first, then XDG_DATA_DIRS), in that order.
    static QStringList searchFolders();

    // Every entry below the folders, at any depth, whose extension is exactly "bundle" (files
    // too, nested bundles too), as full paths. Each folder is walked depth first, entries
    // sorted by name (UTF-16 code units) at each level, an entry before its contents; symbolic
    // links are listed but never followed. Duplicates are kept; a missing folder gives nothing.
    static QStringList allBundles(const QStringList& folders);

    struct Loaded {
        std::unique_ptr<QObject> fetcher; // null when no plug-in was kept
        QString info;                     // "<name> v(<version>)" of the one kept, else ""
    };
    // Loads every bundle in order and instantiates its plug-in; keeps the last fetcher and
    // deletes the others. A bundle without a library, a library that fails to load, or a
    // root object without instance() (or whose instance() gives nothing) is skipped with one
    // line to the system log. Libraries stay loaded.
    static Loaded loadLyricPlugin(const QStringList& bundles);

    // The library of a bundle: the first file directly inside it, by name, that is a shared
    // library ("*.so", "*.so.N"); empty when there is none.
    static QString libraryInBundle(const QString& bundle);
};
