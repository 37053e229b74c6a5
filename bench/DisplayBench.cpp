// The scrolling view's line change and the per-tick update, with the system's fonts.
//   QT_QPA_PLATFORM=offscreen build/bin/display_bench
#include "LargeLrc.h"
#include "ViewBench.h"
#include "core/app/OffsetNudge.h"
#include "core/display/FontTextMeasurer.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPixmap>

namespace {

using namespace bench;

QString hundredLines()
{
    QString text;
    for (int i = 0; i < 100; ++i)
        text += lrcTag(i) +
                (i % 7 == 3 ? QString()
                 : i % 2    ? QStringLiteral("夜色温柔 line %1 河边的灯笼慢慢漂").arg(i)
                         : QStringLiteral("Lanterns on the river, line %1, drifting slow").arg(i)) +
                QLatin1Char('\n');
    return text;
}

// A line change as the view does it: the highlight moves, the list reloads, every row's
// height is recomputed (the texts' measurements are remembered from the first reload).
void BM_LineChange100(benchmark::State& state)
{
    Lyric lyric;
    lyric.parseLRCcontent(hundredLines());
    NullHost host;
    LRCViewModel view(FontTextMeasurer::shared(), host);
    loadModel(view, lyric);
    int line = 0;
    for (auto _ : state) {
        line = (line + 1) % 100;
        view.moveToLRCindex(line);
        benchmark::DoNotOptimize(view.rows().contentHeight());
    }
}
BENCHMARK(BM_LineChange100)->Unit(benchmark::kMicrosecond);

// The first reload of a new lyric: all 100 texts measured.
void BM_FirstReload100(benchmark::State& state)
{
    Lyric lyric;
    lyric.parseLRCcontent(hundredLines());
    for (auto _ : state) {
        NullHost host;
        LRCViewModel view(FontTextMeasurer::shared(), host);
        loadModel(view, lyric);
        benchmark::DoNotOptimize(view.rows().contentHeight());
    }
}
BENCHMARK(BM_FirstReload100)->Unit(benchmark::kMicrosecond);

// The tick while the line stays the same: nothing to do.
void BM_TickSameLine(benchmark::State& state)
{
    Lyric lyric;
    lyric.parseLRCcontent(hundredLines());
    NullHost host;
    LRCViewModel view(FontTextMeasurer::shared(), host);
    view.rows().setViewSize(kPanelSize);
    view.setParser(&lyric);
    view.updatePlayerTime(31.0f);
    for (auto _ : state)
        view.updatePlayerTime(31.5f);
}
BENCHMARK(BM_TickSameLine);

// The widget: a line change and the repaint that follows (two rows redrawn, the rest copied).
void BM_LineChangeAndPaint100(benchmark::State& state)
{
    Lyric lyric;
    lyric.parseLRCcontent(hundredLines());
    LRCView view;
    loadView(view, lyric);
    QPixmap target(view.size());
    int line = 0;
    for (auto _ : state) {
        line = (line + 1) % 100;
        view.moveToLRCindex(line);
        view.render(&target);
    }
}
BENCHMARK(BM_LineChangeAndPaint100)->Unit(benchmark::kMicrosecond);

// A nudge as the user sees it: the offset moves (written into the lyric's text), the lit line
// moves with it at the same play time, and the view repaints. Saving the file comes after.
void BM_NudgeAndRepaint100(benchmark::State& state)
{
    Lyric lyric;
    lyric.parseLRCcontent(hundredLines());
    LRCView view;
    loadView(view, lyric);
    QPixmap target(view.size());
    const float now = 30.05f; // line 10 starts at 30.0: a 0.1 s nudge later lights line 9
    bool later = false;
    for (auto _ : state) {
        later = !later;
        offsetnudge::setOffset(lyric, later ? offsetnudge::kStep : 0.0);
        view.updatePlayerTime(now, true);
        view.render(&target);
    }
}
BENCHMARK(BM_NudgeAndRepaint100)->Unit(benchmark::kMicrosecond);

// A 200,000-line lyric handed to the widget: its layout, the jump to a line in the middle and
// the first paint. Rows are measured around the lit line only; the rest are estimated.
void BM_InstallLongLyric(benchmark::State& state)
{
    Lyric lyric;
    lyric.parseLRCcontent(QString::fromStdString(bench::largeLrc(200000)));
    const float middle = lyric.lrcItemAtIndex(lyric.lines() / 2)->startTime();
    LRCView view;
    view.setFont(lyricFont());
    view.resize(kPanelSize);
    QPixmap target(view.size());
    for (auto _ : state) {
        view.setParser(&lyric);
        view.updatePlayerTime(middle);
        view.render(&target);
        state.PauseTiming();
        view.setParser(nullptr);
        state.ResumeTiming();
    }
    state.counters["lines"] = lyric.lines();
}
BENCHMARK(BM_InstallLongLyric)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
