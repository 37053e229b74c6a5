#include "core/preferences/LyricAppearanceEditor.h"

#include "core/settings/NSFontTransformer.h"
#include "core/settings/Settings.h"

#include "support/QtPrinters.h"
#include "support/TempHome.h"

#include <QFontDatabase>

#include <gtest/gtest.h>

namespace {

struct FontText {
    const char* style;
    double size;
    const char* expected;
};

void PrintTo(const FontText& f, std::ostream* os)
{
    *os << f.expected;
}

class FontFieldText : public ::testing::TestWithParam<FontText> {};

TEST_P(FontFieldText, IsTheFaceNameAndTheRoundedSize)
{
    ASSERT_TRUE(QFontDatabase::hasFamily(QStringLiteral("DejaVu Sans")));
    QFont font = QFontDatabase::font(QStringLiteral("DejaVu Sans"),
                                     QString::fromLatin1(GetParam().style), 10);
    font.setPointSizeF(GetParam().size);
    EXPECT_EQ(LyricAppearanceEditor::fontFieldText(font), QString::fromUtf8(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(DejaVu, FontFieldText,
                         ::testing::Values(FontText{"Book", 14, "DejaVu Sans 14"},
                                           FontText{"Bold", 30, "DejaVu Sans Bold 30"},
                                           FontText{"Oblique", 13.6, "DejaVu Sans Oblique 14"},
                                           FontText{"Bold Oblique", 12.4,
                                                    "DejaVu Sans Bold Oblique 12"}));

class Editor : public ::testing::Test {
protected:
    TempHome home;
    ScopedUserFolders folders{home};
    std::unique_ptr<Settings> settings = Settings::launch(
        std::make_unique<QSettings>(home.filePath(QStringLiteral("s.ini")), QSettings::IniFormat));
    LyricAppearanceEditor editor{*settings};
};

TEST_F(Editor, ColoursWaitForApply)
{
    const QColor grey = settings->lyricNormalColor();
    const QColor white = settings->lyricHighlightColor();
    editor.setPendingNormalColor(Qt::red);
    editor.setPendingHighlightColor(Qt::blue);
    EXPECT_EQ(settings->lyricNormalColor(), grey);
    EXPECT_EQ(settings->lyricHighlightColor(), white);
    editor.reload(); // what reopening the panel does: the pending colours are dropped
    EXPECT_EQ(editor.pendingNormalColor(), grey);
    editor.setPendingNormalColor(Qt::red);
    editor.setPendingHighlightColor(Qt::blue);
    editor.apply();
    EXPECT_EQ(settings->lyricNormalColor(), QColor(Qt::red));
    EXPECT_EQ(settings->lyricHighlightColor(), QColor(Qt::blue));
}

TEST_F(Editor, DefaultsRestoreTheLookOnly)
{
    settings->setLyricStyle(1);
    settings->setIsSaveLRCtoDisk(false);
    settings->setIsShowSingleLineBG(false);
    settings->setLyricCellHeight(11);
    settings->setLyricFont(QFont(QStringLiteral("DejaVu Serif"), 22));
    editor.setPendingNormalColor(Qt::red);
    editor.apply();
    editor.restoreDefaults();
    EXPECT_EQ(settings->lyricStyle(), 1);
    EXPECT_FALSE(settings->isSaveLRCtoDisk());
    EXPECT_TRUE(settings->isShowSingleLineBG());
    EXPECT_EQ(settings->lyricCellHeight(), 5);
    EXPECT_EQ(editor.pendingNormalColor(), settings->lyricNormalColor());
    EXPECT_NE(settings->lyricNormalColor(), QColor(Qt::red));
    const QString family = NSFontTransformer::faceName(NSFontTransformer::systemFont());
    EXPECT_EQ(editor.lyricFontText(), family + " 14");
    EXPECT_EQ(editor.singleLineFontText(), family + " 30");
}

TEST_F(Editor, AChosenFontReplacesOnlyTheOneBeingChosen)
{
    const QFont stream = settings->lyricFont();
    const QFont strip = settings->fontSingleLine();
    const QFont serif(QStringLiteral("DejaVu Serif"), 19);
    editor.beginFontChoice(false);
    EXPECT_EQ(editor.fontBeingChosen(), strip);
    editor.changeFont(serif);
    EXPECT_EQ(settings->fontSingleLine(), serif);
    EXPECT_EQ(settings->lyricFont(), stream);
    editor.beginFontChoice(true);
    EXPECT_EQ(editor.fontBeingChosen(), stream);
    editor.changeFont(serif);
    EXPECT_EQ(settings->lyricFont(), serif);
}

} // namespace
