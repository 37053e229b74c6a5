#pragma once

#include "core/lyric/Lyric.h"
#include "core/store/LyricControl.h"
#include "core/store/LyricsTrack.h"

#include "support/TempHome.h"

#include <QFile>

#include <gtest/gtest.h>

// A delegate that records every call.
struct RecordingDelegate : LyricControlDelegate {
    struct Call {
        QString what;
        QString contents;
        int source = -1;
    };
    bool implementsFailure = true;
    std::vector<Call> calls;

    void controlLrcFetched(LyricControl&, std::unique_ptr<Lyric> lyric, int source) override
    {
        calls.push_back({QStringLiteral("fetched"), lyric ? lyric->contents() : QString(), source});
    }
    bool respondsToLrcFetchFailed() const override { return implementsFailure; }
    void controlLrcFetchFailed(LyricControl&, const QString* error, int type) override
    {
        calls.push_back({QStringLiteral("failed"), error ? *error : QString(), type});
    }
};

// A track held in memory.
struct MemoryTrack : LyricsTrack {
    QString tag, trackArtist, trackName;
    QString lyrics() const override { return tag; }
    void setLyrics(const QString& text) override { tag = text; }
    QString artist() const override { return trackArtist; }
    QString name() const override { return trackName; }
};

class StoreTest : public ::testing::Test {
protected:
    TempHome home;
    ScopedUserFolders folders{home};
    LyricControl control;
    RecordingDelegate delegate;

    void SetUp() override { control.setDelegate(&delegate); }

    static std::unique_ptr<Lyric> lyricOf(const QString& text)
    {
        auto lyric = std::make_unique<Lyric>();
        lyric->parseLRCcontent(text);
        return lyric;
    }
    // Writes text as Ann's "Rain".
    void writeRain(const QString& text, bool overwrite)
    {
        control.writeLrc(*lyricOf(text), QStringLiteral("Ann"), QStringLiteral("Rain"), overwrite);
    }
    QString folder() const { return LyricControl::_pathLrcs(); }
    QByteArray stored(const QString& fileName) const
    {
        QFile file(folder() + u'/' + fileName);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
    }
    void putFile(const QString& fileName, const QByteArray& bytes) const
    {
        LyricControl::_createDictionaryInNecessary();
        QFile file(folder() + u'/' + fileName);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
};
