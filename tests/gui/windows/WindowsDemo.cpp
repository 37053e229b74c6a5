// Timing and looks of the windows: fills a temporary lyrics folder, opens the manager and
// types a filter, printing how long each step took; with --show, keeps the manager and a
// search window (with results) on screen for screenshots until killed.
//   windows_demo [file-count] [--show]
#include "core/store/LyricControl.h"
#include "core/store/NSArrayControllerLyric.h"
#include "gui/windows/LyricManagerWC.h"
#include "gui/windows/LyricSearchWC.h"

#include "support/RawHttpServer.h"
#include "support/TempHome.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QTableWidget>

#include <cstdio>

namespace {

void fillFolder(int count)
{
    LyricControl::_createDictionaryInNecessary();
    const char* artists[] = {"Abba", "Queen", "Nina Simone", "Radiohead", "周杰伦", "Björk"};
    for (int i = 0; i < count; ++i) {
        const QString name =
            QStringLiteral("%1--Song number %2.lrc").arg(QString::fromUtf8(artists[i % 6])).arg(i);
        QFile file(LyricControl::_pathForIdentify(name));
        if (file.open(QIODevice::WriteOnly))
            file.write("[00:01.00]la\n");
    }
}

double ms(QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const int count = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 20000;
    const bool show = app.arguments().contains(QStringLiteral("--show"));
    TempHome home;
    ScopedUserFolders folders(home);
    fillFolder(count);

    LyricControl control;
    LyricManagerWC manager;
    manager.setLyricControl(&control);
    QElapsedTimer timer;
    timer.start();
    manager.showWindow();
    QCoreApplication::processEvents();
    std::printf("files %d: open (scan + first paint) %.1f ms\n", count, ms(timer));

    double worst = 0;
    const QString typed = QStringLiteral("song number 1");
    for (qsizetype n = 1; n <= typed.size(); ++n) {
        timer.restart();
        manager.searchField()->setText(typed.left(n));
        QCoreApplication::processEvents();
        worst = std::max(worst, ms(timer));
    }
    std::printf("filter keystroke, worst of %lld: %.1f ms (%d rows left)\n",
                static_cast<long long>(typed.size()), worst,
                manager.arrayController()->arrangedCount());
    timer.restart();
    manager.searchField()->clear();
    QCoreApplication::processEvents();
    std::printf("clear filter: %.1f ms\n", ms(timer));
    if (!show)
        return 0;

    manager.searchField()->setText(QStringLiteral("queen"));
    manager.setNowPlayingProvider([] { return QStringLiteral("Queen--Song number 7.lrc"); });
    manager.selectLyricNowPlaying();
    manager.move(40, 40);
    RawHttpServer server;
    server.route("/dll/lyricsvr.dll",
                 RawHttpServer::status(
                     200, "<result><lrc id=\"1\" artist=\"Nina Simone\" title=\"Feeling Good\"/>"
                          "<lrc id=\"2\" artist=\"Muse\" title=\"Feeling Good\"/>"
                          "<lrc id=\"3\" artist=\"Nina Simone\" title=\"Feeling Good (Live)\"/>"
                          "</result>"));
    LyricSearchWC search;
    search.setLyricServerHost(server.host());
    search.showWindow();
    search.move(820, 40);
    search.textArtist()->setText(QStringLiteral("Nina Simone"));
    search.textTitle()->setText(QStringLiteral("Feeling Good"));
    search.onSearch();
    return app.exec();
}
