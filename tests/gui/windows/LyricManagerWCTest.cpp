#include "gui/windows/LyricManagerWC.h"

#include "core/app/DesktopPort.h"
#include "core/store/LyricControl.h"
#include "core/store/NSArrayControllerLyric.h"
#include "gui/windows/ContextMenuTableView.h"

#include "support/TempHome.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>

#include <gtest/gtest.h>

#include <cstdio>
#include <unistd.h>

namespace {

struct RecordingDesktop : DesktopPort {
    QStringList* calls;
    explicit RecordingDesktop(QStringList* log)
        : calls(log)
    {
    }
    void openInTextEditor(const QString& path) override { calls->append("edit " + path); }
    void revealFile(const QString& path) override { calls->append("reveal " + path); }
    void openUrl(const QUrl& url) override { calls->append("open " + url.toString()); }
};

class LyricManagerWCTest : public ::testing::Test {
protected:
    TempHome home;
    ScopedUserFolders folders{home};
    LyricControl control;
    QStringList calls;
    std::unique_ptr<LyricManagerWC> window;

    void SetUp() override
    {
        LyricControl::_createDictionaryInNecessary();
        for (const char* name : {"Abba--Waterloo.lrc", "Queen--Bohemian Rhapsody.lrc",
                                 "Nina--Feeling Good.lrc", "Queen--Radio Ga Ga.lrc", "notes.txt"})
            writeLyric(QString::fromUtf8(name));
        window = std::make_unique<LyricManagerWC>(std::make_unique<RecordingDesktop>(&calls));
        window->setLyricControl(&control);
    }
    static void writeLyric(const QString& name)
    {
        QFile file(LyricControl::_pathForIdentify(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[00:01.00]la\n");
    }
    QPoint rowCentre(int row) const
    {
        auto* table = window->tableView();
        return {10, table->rowViewportPosition(row) + table->rowHeight(row) / 2};
    }
};

} // namespace

TEST_F(LyricManagerWCTest, FirstShowingScansAndCounts)
{
    EXPECT_EQ(window->arrayController()->arrangedCount(), 0);
    window->showWindow();
    EXPECT_EQ(window->tableView()->model()->rowCount(), 4);
    EXPECT_EQ(window->labelLrcCount()->text(), "Total 4 items");
    writeLyric(QStringLiteral("Zed--New.lrc"));
    window->showWindow(); // later showings keep the list
    EXPECT_EQ(window->labelLrcCount()->text(), "Total 4 items");
    window->rescanLyricsInDisk();
    EXPECT_EQ(window->labelLrcCount()->text(), "Total 5 items");
}

TEST_F(LyricManagerWCTest, TypingFiltersAndTheMenuChangesTheType)
{
    window->showWindow();
    window->searchField()->setText(QStringLiteral("queen"));
    EXPECT_EQ(window->tableView()->model()->rowCount(), 2);
    window->searchMenu()->actions().at(2)->trigger(); // song only
    EXPECT_EQ(window->curSearchType(), 2);
    EXPECT_EQ(window->tableView()->model()->rowCount(), 0);
    window->validateMenuItems();
    QList<bool> ticks;
    for (QAction* item : window->searchMenu()->actions())
        ticks << item->isChecked();
    EXPECT_EQ(ticks, (QList<bool>{false, false, true}));
    window->searchField()->clear();
    EXPECT_EQ(window->tableView()->model()->rowCount(), 4);
}

TEST_F(LyricManagerWCTest, RightClickSelectsTheUnselectedRowAloneOrKeepsTheSelection)
{
    window->showWindow();
    auto* table = window->tableView();
    table->selectRow(0);
    table->selectionModel()->select(table->model()->index(1, 0),
                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
    EXPECT_EQ(window->tableView()->menuForRightClickAt(rowCentre(1)),
              window->menuTableViewContext());
    EXPECT_EQ(table->selectedRows(), (QList<int>{0, 1}));
    EXPECT_EQ(window->tableView()->menuForRightClickAt(rowCentre(3)),
              window->menuTableViewContext());
    EXPECT_EQ(table->selectedRows(), QList<int>{3});
    EXPECT_EQ(window->arrayController()->selectionIndexes(), QList<int>{3});
}

TEST_F(LyricManagerWCTest, EditRevealAndFolderGoToTheDesktop)
{
    window->showWindow();
    window->editLyric(); // empty selection: nothing
    EXPECT_TRUE(calls.isEmpty());
    window->setNowPlayingProvider([] { return QStringLiteral("Nina--Feeling Good.lrc"); });
    window->selectLyricNowPlaying();
    ASSERT_EQ(window->tableView()->selectedRows().size(), 1);
    window->onDoubleClick();
    window->revealLyric();
    window->onShowLyricsFolder();
    const QString path = LyricControl::_pathForIdentify(QStringLiteral("Nina--Feeling Good.lrc"));
    EXPECT_EQ(calls,
              (QStringList{"edit " + path, "reveal " + path,
                           "open " + QUrl::fromLocalFile(LyricControl::lyricsPath()).toString()}));
}

TEST_F(LyricManagerWCTest, DeletedFileSaysSoAndOpensNothing)
{
    window->showWindow();
    ASSERT_TRUE(
        window->arrayController()->selectItemFileName(QStringLiteral("Abba--Waterloo.lrc")));
    QFile::remove(LyricControl::_pathForIdentify(QStringLiteral("Abba--Waterloo.lrc")));
    window->editLyric();
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_TRUE(window->labelLrcCount()->text().contains("no longer in the lyrics folder"));
    window->rescanLyricsInDisk();
    EXPECT_EQ(window->labelLrcCount()->text(), "Total 3 items");
}

TEST_F(LyricManagerWCTest, NameThatIsNotUtf8IsHarmless)
{
    const QByteArray raw = QFile::encodeName(LyricControl::lyricsPath()) + "/Bad\xff\xfe--Name.lrc";
    FILE* out = std::fopen(raw.constData(), "w");
    ASSERT_NE(out, nullptr);
    std::fclose(out);
    window->showWindow();
    const int listed = int(control.lyricFiles().size());
    EXPECT_GE(listed, 4);
    EXPECT_EQ(window->labelLrcCount()->text(), QStringLiteral("Total %1 items").arg(listed));
    for (int row = 0; row < window->tableView()->model()->rowCount(); ++row) {
        window->tableView()->selectRow(row);
        window->editLyric();
    }
    EXPECT_EQ(calls.size(), 4); // the good files; the odd name is never opened as another file
    EXPECT_EQ(::access(raw.constData(), F_OK), 0); // nothing removed
    ::unlink(raw.constData());
}
