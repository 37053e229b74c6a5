// The lyrics folder: listing a large folder and reading one stored lyric.
//   build/bin/store_bench
#include "core/lyric/Lyric.h"
#include "core/store/LyricControl.h"

#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

// A data home with `count` lyric files (and a few files that are not lyrics).
struct Folder {
    QTemporaryDir dir;
    explicit Folder(int count)
    {
        qputenv("XDG_DATA_HOME", dir.path().toUtf8());
        const QString lyrics = LyricControl::lyricsPath();
        for (int i = 0; i < count; ++i) {
            QFile file(lyrics +
                       QStringLiteral("/Artist %1--Song title %2.lrc").arg(i % 500).arg(i));
            file.open(QIODevice::WriteOnly);
            file.write("[00:01.00]x\n");
        }
        for (const char* other : {"/readme.txt", "/cover.jpg", "/Rain.lrc"}) {
            QFile file(lyrics + QLatin1String(other));
            file.open(QIODevice::WriteOnly);
        }
    }
};

void BM_ScanFolder(benchmark::State& state)
{
    Folder folder(int(state.range(0)));
    LyricControl control;
    for (auto _ : state) {
        control.scanLrcFilesSync();
        benchmark::DoNotOptimize(control.lyricFiles().size());
    }
    state.counters["files"] = double(control.lyricFiles().size());
}
BENCHMARK(BM_ScanFolder)->Arg(20000)->Unit(benchmark::kMillisecond);

void BM_ReadAndParseStoredLyric(benchmark::State& state)
{
    Folder folder(0);
    QString text = QStringLiteral("[ti:Song]\n[ar:Artist]\n");
    for (int i = 0; i < 60; ++i)
        text += QString::asprintf("[%02d:%02d.50]Line number %d of the song\n", i * 4 / 60,
                                  i * 4 % 60, i);
    Lyric lyric;
    lyric.parseLRCcontent(text);
    LyricControl control;
    control.writeLrc(lyric, QStringLiteral("Artist"), QStringLiteral("Song"), true);
    for (auto _ : state) {
        auto read = control.readLrcByIdentify(QStringLiteral("Artist--Song"));
        benchmark::DoNotOptimize(read->lines());
    }
}
BENCHMARK(BM_ReadAndParseStoredLyric)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
