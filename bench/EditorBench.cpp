// The lyric editor and publishing: proof-of-work hashes, a tap, opening a long lyric.
//   build/bin/editor_bench
#include "core/editor/LyricEditorModel.h"
#include "core/publish/ProofOfWork.h"

#include <benchmark/benchmark.h>

namespace {

// Hashes per second on one core: a target no hash meets, cancelled after a fixed count.
void BM_ProofOfWorkHashes(benchmark::State& state)
{
    const QByteArray target(32, '\0');
    constexpr std::uint64_t kHashes = 1 << 20;
    for (auto _ : state) {
        std::atomic<bool> cancel = false;
        proofofwork::solve("VsKpzvM4bqZ2YnhXsfBy3r4kL2Hz9Q6t", target, cancel,
                           [&](std::uint64_t done) {
                               if (done >= kHashes)
                                   cancel = true;
                           });
    }
    state.counters["hashes/s"] = benchmark::Counter(double(kHashes) * double(state.iterations()),
                                                    benchmark::Counter::kIsRate);
}
BENCHMARK(BM_ProofOfWorkHashes)->Unit(benchmark::kMillisecond)->UseRealTime();

QString plainLyric(int lines)
{
    QString text;
    for (int i = 0; i < lines; ++i)
        text += QStringLiteral("line %1 of a long plain lyric, words words words\n").arg(i);
    return text;
}

void BM_OpenLyric500(benchmark::State& state)
{
    QString text;
    for (int i = 0; i < 500; ++i)
        text += QStringLiteral("[%1:%2.%3]line %4 of a long lyric, words words words\n")
                    .arg(i / 60, 2, 10, QLatin1Char('0'))
                    .arg(i % 60, 2, 10, QLatin1Char('0'))
                    .arg(i % 100, 2, 10, QLatin1Char('0'))
                    .arg(i);
    for (auto _ : state) {
        LyricEditorModel model;
        model.load(text);
        benchmark::DoNotOptimize(model.draft().size());
    }
}
BENCHMARK(BM_OpenLyric500)->Unit(benchmark::kMicrosecond);

// A tap on a 500-line plain lyric: the stamp, the undo step and the change signal.
void BM_Tap500(benchmark::State& state)
{
    LyricEditorModel model;
    model.load(plainLyric(500));
    qint64 ms = 0;
    for (auto _ : state) {
        if (model.selected() == model.draft().size() - 1)
            model.select(0);
        model.tap(ms += 10);
    }
}
BENCHMARK(BM_Tap500)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
