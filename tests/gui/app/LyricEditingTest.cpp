// The lyric editor, the "Time it..." offer and the search window on the real controller, with
// the LRCLIB plug-in asking a loopback server and the player simulator playing "Ann - Rain".
#include "DesktopAppFixture.h"

#include "gui/app/TimeItOffer.h"
#include "gui/windows/LyricEditorWindow.h"
#include "gui/windows/LyricSearchWC.h"

#include <QApplication>
#include <QJsonDocument>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include <cmath>
#include <unistd.h>

namespace {

const QByteArray kStored = "[00:01.00]stored one\n[00:02.00]stored two\n";

template <class Window> Window* topLevel()
{
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* window = qobject_cast<Window*>(widget); window && window->isVisible())
            return window;
    return nullptr;
}

class LyricEditing : public DesktopAppFixture {
protected:
    RawHttpServer lrclib;
    std::unique_ptr<PlayerProcess> player;

    void SetUp() override
    {
        DesktopAppFixture::SetUp();
        // The plug-in reads its address from the user's settings file.
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folders->configHome());
        QSettings(folders->configHome() + "/morvane/Versewick.ini", QSettings::IniFormat)
            .setValue("services/lrclibUrl", lrclib.url("/"));
        setService(ServiceAddresses::kLyricSharingKey,
                   QStringLiteral("127.0.0.1:%1").arg(closedPort()));
        bundles = {QStringLiteral(LRCLIB_BUNDLE)};
    }
    void TearDown() override
    {
        DesktopAppFixture::TearDown();
        player.reset();
    }
    void playAndLaunch()
    {
        const QJsonArray songs{QJsonObject{
            {"artist", "Ann"}, {"title", "Rain"}, {"album", "Weather"}, {"duration", 60}}};
        player = std::make_unique<PlayerProcess>(QStringList{
            "--as", "itunes", "--playlist",
            home.write("playlist.json", QJsonDocument(songs).toJson(QJsonDocument::Compact)),
            "--qqmusic-port", QString::number(qqPort)});
        player->send("play");
        ASSERT_TRUE(player->waitEvent("play"));
        launchDesktop();
    }
    QPushButton* offer() const { return panel->window()->findChild<TimeItOffer*>()->button(); }
    LyricEditorWindow* editor() const
    {
        auto* window = topLevel<LyricEditorWindow>();
        return window && QTest::qWaitForWindowActive(window) ? window : nullptr;
    }
    // The play time driven by hand: the controller reads seconds when the key is pressed.
    void keyAt(LyricEditorWindow& window, double seconds, Qt::Key key)
    {
        player->send(QStringLiteral("seek %1").arg(seconds - iTunesControl::kPositionLead));
        ASSERT_TRUE(player->waitEvent("seek"));
        ASSERT_TRUE(waitFor([&] {
            timers.fire();
            return std::abs(controller->state().position() - seconds) < 0.001;
        }));
        QTest::keyClick(window.table(), key);
    }
    void save(LyricEditorWindow& window)
    {
        QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
    }
    QString stored() const
    {
        return QString::fromUtf8(readFile(lyricsFolder() + "/Ann--Rain.lrc"));
    }
};

TEST_F(LyricEditing, APlainLyricIsOfferedTimedByTappingSavedAndInstalled)
{
    lrclib.route("/api/get", RawHttpServer::status(200, R"({"id":1,"trackName":"Rain",)"
                                                        R"("artistName":"Ann","duration":60,)"
                                                        R"("plainLyrics":"first\nsecond"})"));
    settings->setIsSaveLRCtoDisk(false); // the editor saves whatever the setting
    playAndLaunch();
    ASSERT_TRUE(waitFor([&] { return controller->state().status() == "unsynced lyric"; }));
    ASSERT_TRUE(waitFor([&] { return !offer()->isHidden(); }));
    offer()->click();
    LyricEditorWindow* window = editor();
    ASSERT_TRUE(window);
    EXPECT_EQ(window->model().draft().toLrc(), "first\nsecond\n");
    save(*window); // not yet: untimed, it would be stored as if it were synced
    EXPECT_FALSE(QFile::exists(lyricsFolder() + "/Ann--Rain.lrc"));
    EXPECT_FALSE(controller->state().synced());

    player->send("pause");
    ASSERT_TRUE(player->waitEvent("pause"));
    keyAt(*window, 1.5, Qt::Key_Space);
    keyAt(*window, 3.25, Qt::Key_Space);
    save(*window);
    const QString lrc = "[00:01.50]first\n[00:03.25]second\n";
    EXPECT_EQ(stored(), lrc);
    EXPECT_TRUE(controller->state().synced());
    ASSERT_TRUE(controller->lyric());
    EXPECT_EQ(controller->lyric()->contents(), lrc);
    EXPECT_TRUE(waitFor([&] { return offer()->isHidden(); }));
}

// A synced lyric is never offered for timing; a save replaces its file whole, and one that
// cannot be written loses nothing.
TEST_F(LyricEditing, ASyncedLyricIsEditedAndItsFileReplacedWhole)
{
    writeStored("Ann--Rain", kStored);
    playAndLaunch();
    bool offered = false;
    ASSERT_TRUE(waitFor([&] {
        timers.fire();
        offered = offered || !offer()->isHidden();
        return controller->state().synced() && controller->state().lyricLoaded() &&
               controller->state().position() > 0.2;
    }));
    EXPECT_FALSE(offered);
    controller->showLyricEditor();
    LyricEditorWindow* window = editor();
    ASSERT_TRUE(window);
    player->send("pause");
    ASSERT_TRUE(player->waitEvent("pause"));
    window->model().select(1);
    keyAt(*window, 2.5, Qt::Key_Space);

    // The lyrics folder is a file for a moment: the save fails, and says so.
    const QString folder = lyricsFolder();
    ASSERT_TRUE(QDir().rename(folder, folder + ".away"));
    ASSERT_TRUE(QFile(folder).open(QIODevice::WriteOnly));
    save(*window);
    EXPECT_TRUE(window->statusLabel()->text().contains("could not be written"))
        << window->statusLabel()->text().toStdString();
    EXPECT_EQ(controller->lyric()->contents(), QString::fromUtf8(kStored));
    ASSERT_TRUE(QFile::remove(folder));
    ASSERT_TRUE(QDir().rename(folder + ".away", folder));

    // A second name for the old file: a write in place would change what it reads.
    const QString old = home.filePath("old.lrc");
    ASSERT_EQ(::link(QFile::encodeName(lyricsFolder() + "/Ann--Rain.lrc").constData(),
                     QFile::encodeName(old).constData()),
              0);
    save(*window);
    const QString lrc = "[00:01.00]stored one\n[00:02.50]stored two\n";
    EXPECT_EQ(stored(), lrc);
    EXPECT_EQ(readFile(old), kStored) << "written in place";
    EXPECT_EQ(controller->lyric()->contents(), lrc);
    EXPECT_EQ(QDir(lyricsFolder()).entryList(QDir::Files | QDir::Hidden),
              QStringList{"Ann--Rain.lrc"}); // no temporary file left
}

// By hand as automatically, the candidate nearest the song's 60 s comes first; a plain one
// is timed in the editor.
TEST_F(LyricEditing, TheSearchWindowRanksByTheSongsDurationAndEditsAPlainCandidate)
{
    lrclib.route("/api/get", RawHttpServer::status(404));
    lrclib.route("/api/search",
                 RawHttpServer::status(200, R"([{"id":1,"trackName":"Rain","artistName":"Ann",)"
                                            R"("duration":75,"syncedLyrics":"[00:01.00]a"},)"
                                            R"({"id":3,"trackName":"Rain","artistName":"Ann",)"
                                            R"("duration":60,"plainLyrics":"p1\np2"},)"
                                            R"({"id":2,"trackName":"Rain","artistName":"Ann",)"
                                            R"("duration":60,"syncedLyrics":"[00:01.00]b"}])"));
    playAndLaunch();
    ASSERT_TRUE(waitFor([&] { return controller->state().synced(); }));
    controller->showSearchWindow();
    auto* search = topLevel<LyricSearchWC>();
    ASSERT_TRUE(search);
    search->setService(LyricSearchWC::Plugin);
    search->searchButton()->click();
    ASSERT_TRUE(waitFor([&] { return !search->isBusy(); }));
    ASSERT_EQ(search->numberOfRowsInTableView(), 3);
    EXPECT_EQ(search->objectValue("Duration", 0), "1:00");
    EXPECT_EQ(search->objectValue("Duration", 2), "1:15");
    search->tableView()->selectRow(1); // the plain one
    for (auto* button : search->findChildren<QPushButton*>())
        if (button->text() == "Edit")
            button->click();
    LyricEditorWindow* window = editor();
    ASSERT_TRUE(window);
    EXPECT_EQ(window->model().draft().toLrc(), "p1\np2\n");
}

} // namespace
