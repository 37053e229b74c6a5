// Parsing and time queries of the lyric model.
//   build/bin/lyric_bench
#include "LargeLrc.h"

#include "core/lyric/Lyric.h"

#include <benchmark/benchmark.h>

#include <QRandomGenerator>

namespace {

QString tag(int centiseconds)
{
    return QString::asprintf("[%02d:%02d.%02d]", centiseconds / 6000, centiseconds / 100 % 60,
                             centiseconds % 100);
}

// A typical song: metadata, 60 timed lines about 4 s apart, a few repeated choruses.
QString typicalSong()
{
    QString text = QStringLiteral("[ti:Song]\n[ar:Artist]\n[al:Album]\n[by:someone]\n");
    for (int i = 0; i < 60; ++i) {
        text += tag(i * 400 + 50);
        if (i % 10 == 3)
            text += tag(i * 400 + 12000); // a chorus line sung again later
        text += QStringLiteral("Line number %1 of the song, with a few words\n").arg(i);
    }
    return text;
}

// About 1 MiB: tens of thousands of lines, every seventh with three tags.
QString largeLyric()
{
    QString text = QStringLiteral("[offset:+120]\n");
    int t = 0;
    for (int i = 0; text.size() < 1024 * 1024; ++i) {
        text += tag(t);
        if (i % 7 == 0)
            text += tag(t + 100000) + tag(t + 200000);
        text += QStringLiteral("Words of line %1\n").arg(i);
        t += 37;
    }
    return text;
}

void BM_ParseTypicalSong(benchmark::State& state)
{
    const QString text = typicalSong();
    for (auto _ : state) {
        Lyric lyric;
        lyric.parseLRCcontent(text);
        benchmark::DoNotOptimize(lyric.lines());
    }
    state.SetBytesProcessed(state.iterations() * text.toUtf8().size());
}
BENCHMARK(BM_ParseTypicalSong)->Unit(benchmark::kMicrosecond);

void BM_ParseOneMebibyte(benchmark::State& state)
{
    const QString text = largeLyric();
    int lines = 0;
    for (auto _ : state) {
        Lyric lyric;
        lyric.parseLRCcontent(text);
        lines = lyric.lines();
    }
    state.counters["items"] = lines;
    state.SetBytesProcessed(state.iterations() * text.toUtf8().size());
}
BENCHMARK(BM_ParseOneMebibyte)->Unit(benchmark::kMillisecond);

// The 8 MiB lyric of bench/LargeLrc.h (285,134 items), already decoded: parse and free.
void BM_ParseEightMebibytes(benchmark::State& state)
{
    const std::string file = bench::largeLrc();
    const QString text = QString::fromUtf8(file.data(), qsizetype(file.size()));
    for (auto _ : state) {
        Lyric lyric;
        lyric.parseLRCcontent(text);
        benchmark::DoNotOptimize(lyric.lines());
    }
    state.SetBytesProcessed(state.iterations() * qsizetype(file.size()));
}
BENCHMARK(BM_ParseEightMebibytes)->Unit(benchmark::kMillisecond);

// What `versewick-cli lrc readable` does with the 8 MiB lyric of bench/LargeLrc.h, from the
// file's bytes to the bytes written: decode, parse, the readable text, encode, and free.
void BM_ReadableEightMebibytes(benchmark::State& state)
{
    const std::string file = bench::largeLrc();
    const QByteArray bytes = QByteArray::fromRawData(file.data(), qsizetype(file.size()));
    int lines = 0;
    for (auto _ : state) {
        Lyric lyric;
        lyric.parseLRCcontent(*Lyric::decodeText(bytes, Lyric::UTF8Encoding));
        benchmark::DoNotOptimize(lyric.contentsReadable().toUtf8().size());
        lines = lyric.lines();
    }
    state.counters["items"] = lines;
    state.SetBytesProcessed(state.iterations() * qsizetype(file.size()));
}
BENCHMARK(BM_ReadableEightMebibytes)->Unit(benchmark::kMillisecond);

// The update loop: the clock advances by 0.2 s per tick through the whole song.
void BM_ItemAtAdvancingClock(benchmark::State& state)
{
    Lyric lyric;
    lyric.parseLRCcontent(typicalSong());
    double t = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(lyric.lrcItemAtTime(t));
        t += 0.2;
        if (t > 250.0)
            t = 0.0;
    }
}
BENCHMARK(BM_ItemAtAdvancingClock);

// Seeking: every query lands somewhere else, so the cache rarely helps.
void BM_ItemAtRandomSeek(benchmark::State& state)
{
    Lyric lyric;
    lyric.parseLRCcontent(state.range(0) ? largeLyric() : typicalSong());
    QRandomGenerator random(42);
    std::vector<double> times(4096);
    const double span = lyric.lrcArray().back()->startTime() + 5.0;
    for (double& t : times)
        t = random.bounded(span);
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(lyric.lrcItemAtTime(times[i++ % times.size()]));
    }
    state.counters["items"] = lyric.lines();
}
BENCHMARK(BM_ItemAtRandomSeek)->Arg(0)->Arg(1);

} // namespace

BENCHMARK_MAIN();
