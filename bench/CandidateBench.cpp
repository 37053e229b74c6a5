// Scoring and ordering LRCLIB search candidates.
//   build/bin/candidates_bench
#include "LrclibAnswer.h"

#include <benchmark/benchmark.h>

namespace {

// A search answer as the service gives for a popular song: remasters, live versions, covers,
// featured artists, some CJK, about half with synced lyrics.
QList<lrclib::Record> candidates(int count)
{
    const QStringList artists{
        "The Beatles", "Beatles Tribute Band", "The Beatles feat. Billy Preston", "周杰伦",
        "Ann & Co",    "THE BEATLES"};
    const QStringList titles{"Let It Be",        "Let It Be (Remastered 2009)",
                             "Let It Be - Live", "Let It Be [Naked Version]",
                             "告白 气球",        "Let It Be (feat. Someone)"};
    QList<lrclib::Record> records;
    for (int i = 0; i < count; ++i) {
        lrclib::Record r;
        r.id = i;
        r.artistName = artists.at(i % artists.size());
        r.trackName = titles.at(i * 7 % titles.size());
        r.albumName = QStringLiteral("Album %1").arg(i);
        r.duration = 230 + i % 40;
        r.plainLyrics = QStringLiteral("words\nmore words");
        if (i % 2 == 0)
            r.syncedLyrics = QStringLiteral("[00:01.00]words\n[00:03.00]more words");
        records.append(r);
    }
    return records;
}

void BM_RankCandidates(benchmark::State& state)
{
    const QList<lrclib::Record> records = candidates(int(state.range(0)));
    for (auto _ : state) {
        auto ranked = lrclib::rankRecords(records, QStringLiteral("The Beatles"),
                                          QStringLiteral("Let It Be"), 243);
        benchmark::DoNotOptimize(ranked);
    }
}
BENCHMARK(BM_RankCandidates)->Arg(20)->Arg(200)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
