// The Reading choices reach the open displays at once; the strip keeps its line whole.
#include "core/lyric/Lyric.h"
#include "core/reading/LyricReading.h"
#include "core/settings/PLSettingsStore.h"
#include "gui/display/LRCView.h"
#include "gui/display/SingleLineView.h"
#include "gui/preferences/ReadingGroup.h"
#include "support/TempHome.h"

#include <QComboBox>
#include <QSettings>

#include <gtest/gtest.h>

namespace {

TEST(ReadingWidgets, AChoiceIsSavedAndLaysTheOpenViewOutAgain)
{
    TempHome home;
    PLSettingsStore store(
        std::make_unique<QSettings>(home.filePath("s.ini"), QSettings::IniFormat));
    LyricReading::shared().setOptions({});
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[00:01.00]Hello\n[00:01.00]你好\n[00:03.00]End"));
    LRCView view;
    view.resize(400, 300);
    view.show(); // lays the rows out at the view's size
    view.setParser(&lyric);
    const LRCRowModel& rows = view.model().rows();
    EXPECT_EQ(rows.heightForRow(2), 0);
    const double bilingual = rows.heightForRow(1);

    ReadingGroup group(store);
    group.secondaryChoice()->setCurrentIndex(0); // "None"
    Q_EMIT group.secondaryChoice()->activated(0);
    EXPECT_EQ(store.objectForKey("display/secondaryLine").toString(), "none");
    EXPECT_GT(rows.heightForRow(2), 0);
    EXPECT_LT(rows.heightForRow(1), bilingual);
    LyricReading::shared().setOptions({});
}

TEST(ReadingWidgets, TheStripDrawsTheLineUnderWithoutClippingTheLine)
{
    SingleLineView view;
    view.resize(900, 80);
    view.setString(QStringLiteral("A line sung"));
    const QRectF alone = view.textRect();
    view.setSecondary(QStringLiteral("其下一行"));
    EXPECT_FALSE(view.secondaryRect().isEmpty());
    EXPECT_GE(view.secondaryRect().top(), view.textRect().bottom());
    EXPECT_EQ(view.textRect().size(), alone.size());
    EXPECT_LE(view.secondaryRect().bottom(), 80);
    // No room for it: the line stays as it was alone.
    view.setSecondary(QStringLiteral("one\ntwo\nthree\nfour"));
    EXPECT_TRUE(view.secondaryRect().isEmpty());
    EXPECT_EQ(view.textRect(), alone);
}

} // namespace
