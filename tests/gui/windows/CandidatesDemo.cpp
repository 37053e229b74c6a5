// The search window listing LRCLIB candidates as the plug-in ranks them, for screenshots.
//   candidates_demo   (runs until killed)
#include "LrclibAnswer.h"
#include "gui/windows/LyricSearchWC.h"

#include "core/app/LrcFetcherProtocol.h"

#include <QApplication>
#include <QLineEdit>
#include <QPointer>

namespace {

const QByteArray kAnswer = R"json([
 {"id":1,"trackName":"Let It Be - Live","artistName":"The Beatles","duration":272,"syncedLyrics":"[00:01]x"},
 {"id":2,"trackName":"Let It Be","artistName":"Beatles Tribute Band","duration":243,"syncedLyrics":"[00:01]x"},
 {"id":3,"trackName":"Let It Be (Remastered 2009)","artistName":"The Beatles","duration":243.4,"syncedLyrics":"[00:01]x"},
 {"id":4,"trackName":"Let It Be","artistName":"The Beatles","duration":243,"plainLyrics":"When I find myself"},
 {"id":5,"trackName":"Let It Be [Naked]","artistName":"The Beatles","duration":234,"syncedLyrics":"[00:01]x"},
 {"id":6,"trackName":"Let It Be (feat. Billy Preston)","artistName":"The Beatles","duration":3605,"syncedLyrics":"[00:01]x"}
])json";

// Answers every search with the canned answer, ranked as the plug-in ranks a search by hand
// (which gives no duration).
class CannedFetcher : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE void setDelegate(QObject* d) { m_delegate = d; }
    Q_INVOKABLE void lyricsListForArtist(const QString& artist, const QString& song)
    {
        lrcfetcher::sendListFetched(m_delegate,
                                    lrclib::resultItems(kAnswer, artist, song, 0).value());
    }
    Q_INVOKABLE void lyricsContents(const QVariant&) {}

private:
    QPointer<QObject> m_delegate;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    CannedFetcher fetcher;
    LyricSearchWC search;
    search.setLyricFetcher(&fetcher, QStringLiteral("LRCLIB v(1)"));
    search.setService(LyricSearchWC::Plugin);
    search.showWindow();
    search.move(40, 40);
    search.textArtist()->setText(QStringLiteral("The Beatles"));
    search.textTitle()->setText(QStringLiteral("Let It Be"));
    search.onSearch();
    return app.exec();
}

#include "CandidatesDemo.moc"
