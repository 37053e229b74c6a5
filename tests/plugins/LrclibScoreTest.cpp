#include "LrclibAnswer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct Candidate {
    qint64 id;
    const char* artist;
    const char* title;
    double duration;
    bool synced; // else plain only
};

struct Case {
    const char* label;
    const char* artist;
    const char* title;
    double duration; // 0: the player gave none
    std::vector<Candidate> candidates;
    std::vector<qint64> order;      // ids, best first
    std::vector<qint64> acceptable; // ids that fit the song
};

class Scoring : public ::testing::TestWithParam<Case> {};

TEST_P(Scoring, OrdersCandidatesBestFirst)
{
    const Case& c = GetParam();
    QList<lrclib::Record> records;
    for (const Candidate& candidate : c.candidates) {
        lrclib::Record r;
        r.id = candidate.id;
        r.artistName = QString::fromUtf8(candidate.artist);
        r.trackName = QString::fromUtf8(candidate.title);
        r.duration = candidate.duration;
        r.plainLyrics = QStringLiteral("words");
        if (candidate.synced)
            r.syncedLyrics = QStringLiteral("[00:01.00]words");
        records.append(r);
    }
    std::vector<qint64> order, acceptable;
    for (const lrclib::Ranked& ranked : lrclib::rankRecords(
             records, QString::fromUtf8(c.artist), QString::fromUtf8(c.title), c.duration)) {
        order.push_back(ranked.record.id);
        if (ranked.score.acceptable)
            acceptable.push_back(ranked.record.id);
    }
    EXPECT_EQ(order, c.order);
    EXPECT_EQ(acceptable, c.acceptable);
}

// A case a few lines, a candidate a line.
// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Lists, Scoring,
    ::testing::Values(
        Case{"OnlyARemaster", "The Beatles", "Let It Be", 243,
             {{1, "The Beatles", "Let It Be (Remastered 2009)", 243.2, true},
              {2, "Beatles Tribute Band", "Let It Be", 243, true}},
             {1, 2}, {1}},
        Case{"LiveVersionListedFirst", "Nirvana", "Lithium", 257,
             {{1, "Nirvana", "Lithium - Live at Reading", 272, true},
              {2, "Nirvana", "Lithium [Live]", 262, true},
              {3, "NIRVANA", "lithium", 256.6, true}},
             {3, 2, 1}, {3, 2}},
        Case{"FeaturedArtists", "Calvin Harris", "This Is What You Came For", 222,
             {{1, "Calvin Harris feat. Rihanna", "This Is What You Came For", 222, true},
              {2, "Calvin Harris", "This Is What You Came For (feat. Rihanna)", 223, true},
              {3, "Rihanna", "This Is What You Came For", 222, true}},
             {1, 2, 3}, {1, 2}},
        Case{"GuestNamedByThePlayer", "Daft Punk & Pharrell Williams", "Get Lucky feat. Nile Rodgers", 248,
             {{1, "Daft Punk", "Get Lucky (Radio Edit)", 248, true}},
             {1}, {1}},
        Case{"CjkWithAndWithoutSpaces", "周杰伦", "告白气球", 215,
             {{1, "周杰倫", "告白氣球", 215, true},
              {2, "周杰伦", "告白 气球", 216, true},
              {3, "周杰伦", "告白气球（Live）", 230, true}},
             {2, 1, 3}, {2}},
        Case{"AccentsCaseAndPunctuation", "Beyoncé", "Don't Stop", 190,
             {{1, "BEYONCE", "Dont Stop!", 190, true},
              {2, "Beyonce", "Stop", 190, true}},
             {1, 2}, {1}},
        Case{"SyncedBeforePlainOnlyWhenBothFit", "Adele", "Hello", 295,
             {{1, "Adele", "Hello", 295, false},
              {2, "Adele", "Hello", 301, true},
              {3, "Adele", "Hello", 360, true}},
             {2, 1, 3}, {2, 1}},
        Case{"VersionsWithoutADuration", "The Beatles", "Let It Be", 0,
             {{1, "The Beatles", "Let It Be - Live", 272, true},
              {2, "The Beatles", "Let It Be (Remastered 2009)", 243, true}},
             {2, 1}, {2, 1}},
        Case{"NoDurationFromThePlayer", "Queen", "Bohemian Rhapsody", 0,
             {{1, "Queen", "Bohemian Rhapsody - Live Aid", 400, true},
              {2, "Queen", "Bohemian Rhapsody", 354, true}},
             {2, 1}, {2, 1}}),
    [](const auto& info) { return std::string(info.param.label); });
// clang-format on

} // namespace
