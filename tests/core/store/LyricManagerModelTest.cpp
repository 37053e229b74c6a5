#include "core/store/NSArrayControllerLyric.h"
#include "core/store/TrackArtworksValueTransformer.h"
#include "core/store/TrackDurationValueTransformer.h"
#include "core/store/TrackRatingValueTransformer.h"

#include <QBuffer>
#include <QImage>

#include <gtest/gtest.h>

namespace {

LyricStorageFile record(const QString& artist, const QString& song)
{
    return {artist, song, artist + QStringLiteral("--") + song + QStringLiteral(".lrc")};
}

std::vector<LyricStorageFile> library()
{
    return {record("Abba", "Waterloo"), record("Queen", "Bohemian Rhapsody"),
            record("Nina", "Feeling Good"), record("Queen", "Radio Ga Ga")};
}

QStringList listed(const NSArrayControllerLyric& controller)
{
    QStringList names;
    for (int row = 0; row < controller.arrangedCount(); ++row)
        names << controller.arrangedObject(row)->fileName;
    return names;
}

} // namespace

struct FilterCase {
    const char* text;
    int type;
    QStringList expected;
};

class FilterTest : public ::testing::TestWithParam<FilterCase> {};

TEST_P(FilterTest, ListsTheMatchingRecordsInOrder)
{
    NSArrayControllerLyric controller;
    controller.setContent(library());
    controller.search(QString::fromUtf8(GetParam().text), GetParam().type);
    EXPECT_EQ(listed(controller), GetParam().expected);
}

const QStringList kAll{"Abba--Waterloo.lrc", "Queen--Bohemian Rhapsody.lrc",
                       "Nina--Feeling Good.lrc", "Queen--Radio Ga Ga.lrc"};
const QStringList kQueen{"Queen--Bohemian Rhapsody.lrc", "Queen--Radio Ga Ga.lrc"};

INSTANTIATE_TEST_SUITE_P(
    Types, FilterTest,
    ::testing::Values(FilterCase{"", 2, kAll},
                      // Case folded on both sides; type 0 takes the artist or the song.
                      FilterCase{"A", 0, kAll}, FilterCase{"QUEEN", 0, kQueen},
                      FilterCase{"queen", 1, kQueen}, FilterCase{"queen", 2, QStringList()},
                      FilterCase{"ga ga", 2, QStringList{"Queen--Radio Ga Ga.lrc"}},
                      FilterCase{"ga ga", 1, QStringList()},
                      // Any other type behaves as 0.
                      FilterCase{"nin", 7, QStringList{"Nina--Feeling Good.lrc"}},
                      FilterCase{"waterloo", 9, QStringList{"Abba--Waterloo.lrc"}}));

TEST(NSArrayControllerLyricTest, NewObjectPassesTheFilterOnce)
{
    NSArrayControllerLyric controller;
    controller.setContent(library());
    controller.search(QStringLiteral("queen"), 1);
    controller.addObject(record("Zed", "Nothing"));
    EXPECT_TRUE(listed(controller).contains("Zed--Nothing.lrc"));
    EXPECT_FALSE(controller.newObject());
    controller.rearrangeObjects();
    EXPECT_FALSE(listed(controller).contains("Zed--Nothing.lrc"));
    // Without a search there is no new object either.
    NSArrayControllerLyric unfiltered;
    unfiltered.addObject(record("Zed", "Nothing"));
    EXPECT_FALSE(unfiltered.newObject());
}

TEST(NSArrayControllerLyricTest, SelectItemFileNameIsExactAndOnlyAmongListed)
{
    NSArrayControllerLyric controller;
    controller.setContent(library());
    EXPECT_FALSE(controller.selectItemFileName(QStringLiteral("abba--waterloo.lrc")));
    ASSERT_TRUE(controller.selectItemFileName(QStringLiteral("Nina--Feeling Good.lrc")));
    EXPECT_EQ(controller.selectionIndexes(), QList<int>{2});
    controller.search(QStringLiteral("queen"), 0);
    EXPECT_TRUE(controller.selectionIndexes().isEmpty()); // filtered out
    EXPECT_FALSE(controller.selectItemFileName(QStringLiteral("Nina--Feeling Good.lrc")));
    ASSERT_TRUE(controller.selectItemFileName(QStringLiteral("Queen--Radio Ga Ga.lrc")));
    EXPECT_EQ(controller.selectionIndexes(), QList<int>{1});
}

TEST(NSArrayControllerLyricTest, SortKeepsTheSelectedRecord)
{
    NSArrayControllerLyric controller;
    controller.setContent(library());
    controller.selectItemFileName(QStringLiteral("Abba--Waterloo.lrc"));
    controller.sort(NSArrayControllerLyric::SongColumn, Qt::DescendingOrder);
    EXPECT_EQ(listed(controller).first(), "Abba--Waterloo.lrc");
    EXPECT_EQ(listed(controller).last(), "Queen--Bohemian Rhapsody.lrc");
    EXPECT_EQ(controller.selectionIndexes(), QList<int>{0});
}

struct DurationCase {
    QVariant value;
    QVariant expected;
};

class DurationTest : public ::testing::TestWithParam<DurationCase> {};

TEST_P(DurationTest, FormatsMinutesAndSeconds)
{
    EXPECT_EQ(TrackDurationValueTransformer::transformedValue(GetParam().value),
              GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Values, DurationTest,
    ::testing::Values(
        DurationCase{65.4, QStringLiteral("1:05")}, DurationCase{600, QStringLiteral("10:00")},
        DurationCase{59.6, QStringLiteral("1:00")}, DurationCase{9, QStringLiteral("0:09")},
        DurationCase{10, QStringLiteral("0:10")}, DurationCase{0.4, QStringLiteral("0:00")},
        DurationCase{0, QVariant()}, DurationCase{-3.5, QVariant()},
        DurationCase{QStringLiteral("abc"), QStringLiteral("abc")}));

TEST(TrackRatingValueTransformerTest, ConvertsNumbersOnly)
{
    EXPECT_EQ(TrackRatingValueTransformer::transformedValue(80).toDouble(), 4.0);
    EXPECT_EQ(TrackRatingValueTransformer::reverseTransformedValue(2.5).toDouble(), 50.0);
    EXPECT_EQ(TrackRatingValueTransformer::transformedValue(QStringLiteral("x")),
              QVariant(QStringLiteral("x")));
    EXPECT_TRUE(TrackRatingValueTransformer::allowsReverseTransformation());
}

TEST(TrackArtworksValueTransformerTest, LastArtworkElseIconAt128)
{
    QImage red(40, 20, QImage::Format_RGB32);
    red.fill(Qt::red);
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    red.save(&buffer, "PNG");

    const QImage picked = TrackArtworksValueTransformer::transformedValue(
                              QVariantList{QByteArray("not an image"), png})
                              .value<QImage>();
    EXPECT_EQ(picked.size(), QSize(128, 128));
    EXPECT_EQ(QColor(picked.pixel(64, 64)), QColor(Qt::red));

    const QImage icon = TrackArtworksValueTransformer::transformedValue(
                            QVariantList{png, QByteArray("not an image")})
                            .value<QImage>();
    EXPECT_EQ(icon.size(), QSize(128, 128));
    EXPECT_NE(QColor(icon.pixel(64, 64)), QColor(Qt::red));
    EXPECT_EQ(TrackArtworksValueTransformer::transformedValue(5), QVariant(5));
}
