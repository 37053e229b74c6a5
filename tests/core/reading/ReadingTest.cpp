// Translation lines, readings and the Chinese script as the displays show them.
#include "core/lyric/Lyric.h"
#include "core/reading/LyricReading.h"
#include "core/reading/ReadingOptions.h"
#include "core/reading/Romanizer.h"
#include "core/reading/TranslationLines.h"
#include "core/settings/PLSettingsStore.h"
#include "core/text/PLTranslatorZh.h"

#include "support/TempHome.h"

#include <QFile>
#include <QSettings>

#include <gtest/gtest.h>

namespace {

struct Detection {
    const char* name;
    const char* lrc;
    std::vector<int> owners;
    const char* underFirst; // the first line's translation
};

class TranslationDetection : public ::testing::TestWithParam<Detection> {};

TEST_P(TranslationDetection, FoldsOnlyTheLinesRightAfterTheirLineOnTheSameTags)
{
    Lyric lyric;
    lyric.parseLRCcontent(QString::fromUtf8(GetParam().lrc));
    EXPECT_EQ(translation::owners(lyric), GetParam().owners);
    PLTranslatorZh converter(false);
    Romanizer romanizer;
    const LineReadings r = LyricReading::compute(lyric, {}, converter, &romanizer);
    EXPECT_EQ(r.secondaryOf(0), QString::fromUtf8(GetParam().underFirst));
}

using Owners = std::vector<int>;

INSTANTIATE_TEST_SUITE_P(
    Layouts, TranslationDetection,
    ::testing::Values(
        Detection{"Pairs", "[00:01.00]Hello\n[00:01.00]你好\n[00:03.00]World\n[00:03.00]世界",
                  Owners{0, 0, 2, 2}, "你好"},
        // A chorus written once with all its tags: a line right after it repeating one of them
        // is a line of its own.
        Detection{"LoneRepeatedTagOfAChorus",
                  "[00:01.00][00:09.00]Chorus\n[00:09.00]Bridge\n[00:05.00]Verse",
                  Owners{0, 1, 2, 3}, ""},
        Detection{"SameTagNotRightAfter", "[00:01.00]A\n[00:02.00]X\n[00:01.00]B", Owners{0, 1, 2},
                  ""},
        Detection{"ThreeLinesOnOneTag", "[00:01.00]歌\n[00:01.00]ge\n[00:01.00]Song\n[00:04.00]End",
                  Owners{0, 0, 0, 3}, "ge\nSong"},
        Detection{"FourLinesOnOneTagAreNoTranslation",
                  "[00:00.00]a\n[00:00.00]b\n[00:00.00]c\n[00:00.00]d", Owners{0, 1, 2, 3}, ""},
        Detection{"BlankTranslation", "[00:01.00]Hello\n[00:01.00]\n[00:03.00]World",
                  Owners{0, 0, 2}, ""},
        Detection{"BlankLineTranslatesNothing", "[00:01.00]\n[00:01.00]Hello", Owners{0, 1}, ""}),
    [](const auto& info) { return std::string(info.param.name); });

struct Reading {
    const char* name;
    const char* line;
    const char* latin;
};

class Romanization : public ::testing::TestWithParam<Reading> {};

TEST_P(Romanization, ReadsHanKanaAndHangulKeepingLatin)
{
    static const Romanizer romanizer;
    EXPECT_EQ(romanizer.romanize(QString::fromUtf8(GetParam().line)),
              QString::fromUtf8(GetParam().latin));
}

INSTANTIATE_TEST_SUITE_P(
    Scripts, Romanization,
    ::testing::Values(Reading{"MandarinWithToneMarks", "我爱你中国", "wǒ ài nǐ zhōng guó"},
                      Reading{"Katakana", "カラオケ", "karaoke"},
                      // ICU reads kanji only as Mandarin: in a Japanese line they are kept.
                      Reading{"KanaAndKanji", "さくらの花", "sakurano 花"},
                      Reading{"Korean", "사랑해", "salanghae"},
                      Reading{"MixedLatin", "我爱你 baby", "wǒ ài nǐ baby"},
                      Reading{"LatinOnlyHasNoReading", "Hello world", ""}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(ScriptOnDisplay, ConvertsTheShownTextAndLeavesTheFileAlone)
{
    TempHome home;
    const QByteArray stored = QStringLiteral("[00:01.00]愛與夢\n[00:01.00]Love\n").toUtf8();
    const QString path = home.write("song.lrc", stored);
    Lyric lyric;
    ASSERT_TRUE(lyric.parseLRCfile(path));
    const QString contents = lyric.contents();
    LyricReading reading;
    reading.setOptions(
        {ReadingOptions::Secondary::Romanization, ReadingOptions::Script::Simplified});
    const auto r = reading.readingsFor(&lyric);
    EXPECT_EQ(r->textOf(0, {}), QStringLiteral("爱与梦"));
    EXPECT_EQ(r->secondaryOf(0), QStringLiteral("ài yǔ mèng"));
    EXPECT_EQ(r->textOf(1, {}), QStringLiteral("Love"));
    EXPECT_TRUE(r->isFolded(1));               // a translation is not lit in place of its line
    EXPECT_EQ(reading.readingsFor(&lyric), r); // once per lyric
    EXPECT_EQ(lyric.lrcItemAtIndex(0)->content(), QStringLiteral("愛與夢"));
    EXPECT_EQ(lyric.contents(), contents);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), stored);
}

TEST(ScriptOnDisplay, TraditionalKeepsThePlainOne)
{
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[00:01.00]我们一起唱每一条船\n"));
    const PLTranslatorZh converter(false);
    const auto r = LyricReading::compute(
        lyric, {ReadingOptions::Secondary::None, ReadingOptions::Script::Traditional}, converter,
        nullptr);
    EXPECT_EQ(r.text.at(0), QStringLiteral("我們一起唱每一條船"));
}

TEST(ReadingOptions, StoredByNameUnknownNamesReadAsTheDefaults)
{
    TempHome home;
    PLSettingsStore store(
        std::make_unique<QSettings>(home.filePath("s.ini"), QSettings::IniFormat));
    EXPECT_EQ(ReadingOptions::load(store), ReadingOptions{});
    const ReadingOptions set{ReadingOptions::Secondary::Romanization,
                             ReadingOptions::Script::Traditional};
    set.save(store);
    EXPECT_EQ(store.objectForKey("display/secondaryLine").toString(), "romanization");
    EXPECT_EQ(store.objectForKey("display/script").toString(), "traditional");
    EXPECT_EQ(ReadingOptions::load(store), set);
    store.setObject(QStringLiteral("klingon"), "display/script");
    store.setObject(QStringLiteral("none"), "display/secondaryLine");
    EXPECT_EQ(ReadingOptions::load(store),
              (ReadingOptions{ReadingOptions::Secondary::None, ReadingOptions::Script::Original}));
}

} // namespace
