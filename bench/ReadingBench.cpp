// Reading aids: the romanisation of a whole lyric (once per lyric) and a line change with
// lines under the lines.
//   QT_QPA_PLATFORM=offscreen build/bin/reading_bench
#include "ViewBench.h"
#include "core/display/FontTextMeasurer.h"
#include "core/reading/LyricReading.h"
#include "core/reading/Romanizer.h"
#include "core/text/PLTranslatorZh.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPixmap>

namespace {

using namespace bench;

// Mandarin, Japanese and Korean lines with some Latin in them.
QString hundredCjkLines()
{
    QString text;
    for (int i = 0; i < 100; ++i)
        text += lrcTag(i) +
                (i % 3 == 0 ? QStringLiteral("夜色温柔 %1 河边的灯笼慢慢漂向远方").arg(i)
                 : i % 3 == 1 ? QStringLiteral("さくらの花が咲いている %1 きれいなカラオケ").arg(i)
                              : QStringLiteral("사랑해요 baby %1 오늘 밤 함께 노래해요").arg(i)) +
                QLatin1Char('\n');
    return text;
}

// 100 lines, each followed by its translation on the same tag.
QString hundredBilingualLines()
{
    QString text;
    for (int i = 0; i < 100; ++i)
        text += lrcTag(i) +
                QStringLiteral("Lanterns on the river, line %1, drifting slow\n").arg(i) +
                lrcTag(i) + QStringLiteral("河边的灯笼 第%1行 慢慢漂\n").arg(i);
    return text;
}

// The readings of a 100-line CJK lyric: every line romanised, Chinese converted.
void BM_Romanize100(benchmark::State& state)
{
    Lyric lyric;
    lyric.parseLRCcontent(hundredCjkLines());
    const PLTranslatorZh converter(false);
    const Romanizer romanizer;
    const ReadingOptions options{ReadingOptions::Secondary::Romanization,
                                 ReadingOptions::Script::Simplified};
    for (auto _ : state)
        benchmark::DoNotOptimize(LyricReading::compute(lyric, options, converter, &romanizer));
}
BENCHMARK(BM_Romanize100)->Unit(benchmark::kMillisecond);

// The first romanisation in a process: ICU's rules and the converter's tables loaded too.
void BM_Romanize100FirstUse(benchmark::State& state)
{
    Lyric lyric;
    lyric.parseLRCcontent(hundredCjkLines());
    for (auto _ : state) {
        LyricReading reading;
        reading.setOptions(
            {ReadingOptions::Secondary::Romanization, ReadingOptions::Script::Original});
        benchmark::DoNotOptimize(reading.readingsFor(&lyric));
    }
}
BENCHMARK(BM_Romanize100FirstUse)->Unit(benchmark::kMillisecond);

// A line change in a bilingual lyric, translations under their lines, as the view does it.
void BM_LineChangeBilingual100(benchmark::State& state)
{
    Lyric lyric;
    lyric.parseLRCcontent(hundredBilingualLines());
    LyricReading reading;
    NullHost host;
    LRCViewModel view(FontTextMeasurer::shared(), host);
    view.rows().setReadingsSource([&](const Lyric* l) { return reading.readingsFor(l); });
    loadModel(view, lyric);
    int line = 0;
    for (auto _ : state) {
        line = (line + 2) % 200;
        view.moveToLRCindex(line);
        view.reloadData();
        benchmark::DoNotOptimize(view.rows().contentHeight());
    }
}
BENCHMARK(BM_LineChangeBilingual100)->Unit(benchmark::kMicrosecond);

// The widget: a line change and a full repaint with translations under the lines.
void BM_LineChangeAndPaintBilingual100(benchmark::State& state)
{
    Lyric lyric;
    lyric.parseLRCcontent(hundredBilingualLines());
    LRCView view;
    view.show(); // laid out at its size
    loadView(view, lyric);
    QPixmap target(view.size());
    int line = 0;
    for (auto _ : state) {
        line = (line + 2) % 200;
        view.moveToLRCindex(line);
        view.render(&target);
    }
    state.counters["rowsDrawn"] = view.renderedRows();
}
BENCHMARK(BM_LineChangeAndPaintBilingual100)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
