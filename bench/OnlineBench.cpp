// Script conversion, request codes and the server's XML answers.
//   build/bin/online_bench
#include "core/online/QQFetchHelper.h"
#include "core/text/PLTranslatorZh.h"

#include <benchmark/benchmark.h>

namespace {

// About 100 KB of lyric text (UTF-8): tags, Latin text and table characters.
QString lyricText(const QString& table)
{
    QString text;
    for (int line = 0; text.toUtf8().size() < 100 * 1024; ++line) {
        text += QString::asprintf("[%02d:%02d.00]", line / 60 % 100, line % 60);
        for (int i = 0; i < 14; ++i)
            text += table[(line * 31 + i * 7) % table.size()];
        text += QStringLiteral(" la la\n");
    }
    return text;
}

void BM_ZhConverterConstruction(benchmark::State& state)
{
    for (auto _ : state) {
        PLTranslatorZh converter;
        benchmark::DoNotOptimize(converter.hasMarsSupport());
    }
}
BENCHMARK(BM_ZhConverterConstruction)->Unit(benchmark::kMicrosecond);

void BM_ZhConvert(benchmark::State& state)
{
    const PLTranslatorZh converter;
    const int direction = int(state.range(0));
    const QString text = lyricText(direction == 0 ? converter.charListT() : converter.charListS());
    for (auto _ : state) {
        QString out = direction == 0   ? converter.translateToSimplifed(text)
                      : direction == 1 ? converter.translateToTraditional(text)
                                       : converter.translateToMars(text);
        benchmark::DoNotOptimize(out.size());
    }
    state.SetBytesProcessed(state.iterations() * text.toUtf8().size());
    state.SetLabel(direction == 0   ? "to simplified"
                   : direction == 1 ? "to traditional"
                                    : "to mars");
}
BENCHMARK(BM_ZhConvert)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

void BM_RequestCode(benchmark::State& state)
{
    const QString artist = QStringLiteral("The Morvane Players \u6b4c\u624b");
    const QString title = QStringLiteral("Lanterns on the Quay");
    std::int64_t id = 1;
    for (auto _ : state)
        benchmark::DoNotOptimize(QQFetchHelper::encryptedCodeFromID(id++, artist, title));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_RequestCode);

void BM_ParseSearchAnswer(benchmark::State& state)
{
    QByteArray xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<result>";
    for (int i = 0; i < 50; ++i)
        xml += "<lrc id=\"" + QByteArray::number(100000 + i) + "\" artist=\"Artist " +
               QByteArray::number(i) + "\" title=\"Title &amp; more " + QByteArray::number(i) +
               "\"></lrc>\n";
    xml += "</result>";
    for (auto _ : state) {
        const auto items = QQFetchHelper::lrcListItemsFromXML(xml, QStringLiteral("h"));
        benchmark::DoNotOptimize(items.size());
    }
}
BENCHMARK(BM_ParseSearchAnswer)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
