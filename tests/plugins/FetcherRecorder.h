#pragma once

#include "core/app/LrcFetcherProtocol.h"
#include "core/app/LyricPluginLoader.h"

#include "support/PlayerProcess.h"

#include <QCoreApplication>
#include <QObject>
#include <QVariant>

#include <gtest/gtest.h>

// The application's side of the plug-in contract, recording every answer.
class FetcherRecorder : public QObject {
    Q_OBJECT
public:
    struct Answer {
        QString what; // "list", "listFailed", "content", "contentFailed"
        QVariantList items;
        QString text;
        QVariant item;
    };
    QList<Answer> answers;

    // Waits for the next answer; also checks that no second one follows at once.
    Answer next(int ms = 10000)
    {
        const qsizetype seen = answers.size();
        if (!waitFor([&] { return answers.size() > seen; }, ms))
            return {QStringLiteral("none"), {}, {}, {}};
        QCoreApplication::processEvents();
        EXPECT_EQ(answers.size(), seen + 1) << "one call, one answer";
        return answers.at(seen);
    }

    Q_INVOKABLE void lyricsListFetched(const QVariantList& items)
    {
        answers.append({QStringLiteral("list"), items, {}, {}});
    }
    Q_INVOKABLE void lyricsListFetchFailed(const QString& error)
    {
        answers.append({QStringLiteral("listFailed"), {}, error, {}});
    }
    Q_INVOKABLE void lyricsContentFetched(const QString& text, const QVariant& item)
    {
        answers.append({QStringLiteral("content"), {}, text, item});
    }
    Q_INVOKABLE void lyricsContentFetchFailed(const QString& error)
    {
        answers.append({QStringLiteral("contentFailed"), {}, error, {}});
    }
};

// Loads one bundle through the application's loader and makes the recorder its delegate.
inline LyricPluginLoader::Loaded loadFetcher(const QString& bundle, FetcherRecorder& recorder,
                                             int timeoutMs = 0)
{
    LyricPluginLoader::Loaded loaded = LyricPluginLoader::loadLyricPlugin({bundle});
    if (loaded.fetcher) {
        QMetaObject::invokeMethod(loaded.fetcher.get(), "setDelegate", Q_ARG(QObject*, &recorder));
        if (timeoutMs > 0)
            loaded.fetcher->setProperty("requestTimeout", timeoutMs);
    }
    return loaded;
}

inline QStringList titlesOf(const QVariantList& items)
{
    QStringList titles;
    for (const QVariant& item : items)
        titles << item.toMap().value(QStringLiteral("title")).toString();
    return titles;
}
