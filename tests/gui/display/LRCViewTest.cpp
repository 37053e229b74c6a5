#include "gui/display/LRCView.h"
#include "core/lyric/Lyric.h"
#include "core/settings/Settings.h"
#include "gui/display/AppController.h"
#include "support/TempHome.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QSettings>

namespace {

QString lyricOf(int lines, const QString& text = QStringLiteral("line %1"), double gap = 3)
{
    QString lrc;
    for (int i = 0; i < lines; ++i) {
        const int cs = int(i * gap * 100);
        lrc += QString::asprintf("[%02d:%02d.%02d]", cs / 6000, cs / 100 % 60, cs % 100) +
               text.arg(i) + QLatin1Char('\n');
    }
    return lrc;
}

QImage grabOf(QWidget& widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

// The brightest pixel of a horizontal band: lit text is white, the rest grey.
int brightestIn(const QImage& image, int top, int bottom)
{
    int best = 0;
    for (int y = std::max(0, top); y < std::min(image.height(), bottom); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 200)
                best = std::max(best, qGray(image.pixel(x, y)));
    return best;
}

TEST(LRCView, TheLitLineIsWhiteAndTheOthersGrey)
{
    Lyric lyric;
    lyric.parseLRCcontent(lyricOf(20));
    LRCView view;
    view.setColorNormal(QColor(128, 128, 128));
    view.setColorHeight(Qt::white);
    view.resize(400, 300);
    view.setParser(&lyric);
    view.show();
    view.updatePlayerTime(30.5f); // line 10, an instant jump from nothing lit
    EXPECT_EQ(view.currentLRCindex(), 10);
    const QRectF lit = view.model().rows().rectForRow(11);
    EXPECT_DOUBLE_EQ(view.contentOffset(), lit.center().y() - 150);
    const QImage image = grabOf(view);
    const int litTop = int(lit.top() - view.contentOffset());
    EXPECT_GT(brightestIn(image, litTop, litTop + int(lit.height())), 240);
    EXPECT_LT(brightestIn(image, litTop + int(lit.height()) + 2, 300), 160);
}

TEST(LRCView, RowsAreDrawnOncePerReloadNotPerPaint)
{
    Lyric lyric;
    lyric.parseLRCcontent(lyricOf(100));
    LRCView view;
    view.resize(400, 300);
    view.setParser(&lyric);
    view.refresh();
    view.grab();
    const int first = view.renderedRows();
    EXPECT_GT(first, 0);
    view.grab();
    EXPECT_EQ(view.renderedRows(), first);
    view.setCurrentLRCIndex(0); // a line change draws the newly lit row once
    view.grab();
    EXPECT_EQ(view.renderedRows(), first + 1);
    view.setCurrentLRCIndex(1); // the row that goes out keeps its picture in the normal colour
    view.grab();
    EXPECT_EQ(view.renderedRows(), first + 2);
}

TEST(LRCView, ANewFontLaysTheRowsOutAtOnce)
{
    Lyric lyric;
    lyric.parseLRCcontent(lyricOf(5));
    LRCView view;
    view.resize(400, 300);
    view.setParser(&lyric);
    const double before = view.model().rows().heightForRow(1);
    QFont large = view.font();
    large.setPixelSize(60);
    view.setFont(large);
    EXPECT_GT(view.model().rows().heightForRow(1), 1.5 * before);
}

TEST(LRCView, AScrollOfLessThanAPixelPaintsNothing)
{
    Lyric lyric;
    lyric.parseLRCcontent(lyricOf(20, QStringLiteral("line %1"), 100));
    LRCView view;
    view.resize(400, 300);
    view.setParser(&lyric);
    view.show();
    QElapsedTimer waited;
    waited.start();
    while (view.paintedFrames() == 0 && waited.elapsed() < 10000)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    const double halfRow = view.model().rows().rectForRow(3).height() * 0.5;
    // Line 2 runs from 200 s to 300 s and scrolls half its row meanwhile: a time within it
    // whose offset is `pixels` past the line's own.
    const auto moveBy = [&](double pixels) {
        view.updatePositionAtPlayTime(float(200 + 100 * pixels / halfRow), true);
        QApplication::processEvents();
        return view.paintedFrames();
    };
    const int first = view.paintedFrames();
    const int settled = moveBy(0.2);
    EXPECT_EQ(settled, first + 1);
    EXPECT_EQ(moveBy(0.4), settled);
    EXPECT_EQ(moveBy(1.3), settled + 1);
}

TEST(LRCView, TheAnimationChainAdvancesLineByLine)
{
    Lyric lyric;
    lyric.parseLRCcontent(lyricOf(8, QStringLiteral("line %1"), 0.25));
    LRCView view;
    view.resize(300, 200);
    view.setParser(&lyric);
    view.show();
    view.updatePositionAtPlayTime(0.1f, false);
    EXPECT_TRUE(view.isAnimation());
    QElapsedTimer waited;
    waited.start();
    while (view.currentLRCindex() < 7 && waited.elapsed() < 20000)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ(view.currentLRCindex(), 7);
    EXPECT_FALSE(view.isAnimation());
    view.stopLyricsScrollAnimation();
}

TEST(LRCView, AChainThroughLinesSharingOneTimeRunsFromTheEventLoop)
{
    Lyric lyric;
    lyric.parseLRCcontent(QStringLiteral("[00:00.00]first\n") +
                          lyricOf(120, QStringLiteral("same %1"), 0)
                              .replace(QStringLiteral("[00:00.00]"), QStringLiteral("[00:00.30]")));
    LRCView view;
    view.resize(300, 200);
    view.setParser(&lyric);
    view.show();
    view.setCurrentLRCIndex(1);
    view.scrollAnimateToHeight(0, 0); // a scroll of no length still ends from the event loop
    EXPECT_EQ(view.currentLRCindex(), 1);
    EXPECT_TRUE(view.isAnimation());
    QElapsedTimer waited;
    waited.start();
    while (view.currentLRCindex() < 120 && waited.elapsed() < 30000)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ(view.currentLRCindex(), 120);
}

TEST(LRCView, TheInformationTextIsWhiteSize17AndHidesWhenEmpty)
{
    LRCView view;
    view.resize(300, 200);
    view.show();
    view.setDefaultString(QStringLiteral("fetching lyrics..."));
    auto* label = view.findChild<QLabel*>();
    ASSERT_NE(label, nullptr);
    EXPECT_TRUE(view.isDefaultStringVisible());
    EXPECT_EQ(label->alignment(), Qt::AlignCenter);
    EXPECT_EQ(label->font().pixelSize(), 17);
    EXPECT_EQ(view.defaultString(), QStringLiteral("fetching lyrics..."));
    view.setDefaultString(QStringLiteral(""));
    EXPECT_FALSE(view.isDefaultStringVisible());
    view.setDefaultString(QStringLiteral("x"));
    view.loadLRCcontent(lyricOf(3));
    EXPECT_FALSE(view.isDefaultStringVisible());
    EXPECT_EQ(view.model().rows().lineCount(), 3);
}

struct BadInput {
    const char* name;
    int lines;
    int characters; // 0: short lines
    QSize view;
    const char* font;
};
class LRCViewBadInput : public ::testing::TestWithParam<BadInput> {};

TEST_P(LRCViewBadInput, NothingIsDrawnOutsideTheView)
{
    const BadInput& input = GetParam();
    Lyric lyric;
    lyric.parseLRCcontent(lyricOf(input.lines, input.characters
                                                   ? QString(input.characters, QLatin1Char('w')) +
                                                         QStringLiteral(" %1")
                                                   : QStringLiteral("line %1")));
    QWidget frame;
    frame.setAttribute(Qt::WA_TranslucentBackground);
    frame.resize(input.view + QSize(200, 200));
    LRCView view(&frame);
    view.setGeometry(QRect(QPoint(100, 100), input.view));
    QFont font(QString::fromUtf8(input.font));
    font.setPointSize(14);
    view.setFont(font);
    view.setParser(&lyric);
    frame.show();
    for (const float t : {0.0f, 4.0f, 1e6f, -5.0f, 3.0f * float(input.lines) / 2})
        view.updatePlayerTime(t);
    view.updatePositionAtPlayTime(1.5f, false);
    QImage image(frame.size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    frame.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    const QRect inside = view.geometry();
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (!inside.contains(x, y)) {
                ASSERT_EQ(qAlpha(image.pixel(x, y)), 0) << x << "," << y;
            }
    view.stopLyricsScrollAnimation();
}
INSTANTIATE_TEST_SUITE_P(Inputs, LRCViewBadInput,
                         ::testing::Values(BadInput{"empty", 0, 0, {300, 200}, "DejaVu Sans"},
                                           BadInput{"one", 1, 0, {300, 200}, "DejaVu Sans"},
                                           BadInput{"many", 10000, 0, {300, 200}, "DejaVu Sans"},
                                           BadInput{"wide", 20, 5000, {300, 200}, "DejaVu Sans"},
                                           BadInput{"low", 20, 0, {300, 3}, "DejaVu Sans"},
                                           BadInput{
                                               "nofont", 20, 0, {300, 200}, "No Such Font 123"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(AppController, UpdateConfigsReadsTheSettings)
{
    TempHome home;
    auto settings = Settings::launch(
        std::make_unique<QSettings>(home.filePath(QStringLiteral("s.ini")), QSettings::IniFormat));
    settings->setLyricCellHeight(9);
    settings->setLyricHighlightColor(QColor(255, 200, 0));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(21);
    settings->setLyricFont(font);
    AppController controller(settings.get());
    controller.updateTime(3); // nothing built yet: harmless
    controller.applicationDidFinishLaunching();
    ASSERT_NE(controller.lrcView(), nullptr);
    EXPECT_EQ(controller.lrcView()->cellPadding(), 9);
    EXPECT_EQ(controller.lrcView()->colorHeight(), QColor(255, 200, 0));
    EXPECT_EQ(controller.lrcView()->font().pixelSize(), 21); // sizes are pixels
    EXPECT_TRUE(controller.window()->isVisible());

    controller.setInfo(QString());
    EXPECT_FALSE(controller.lrcView()->isDefaultStringVisible());
    controller.setInfo(QStringLiteral("lyric is not available"));
    EXPECT_TRUE(controller.lrcView()->isDefaultStringVisible());

    Lyric lyric;
    lyric.parseLRCcontent(lyricOf(10));
    controller.setParser(&lyric);
    controller.updateTime(7);
    EXPECT_EQ(controller.lrcView()->currentLRCindex(), 2);
    controller.setParser(nullptr);
    controller.updateTime(9);
    EXPECT_EQ(controller.lrcView()->currentLRCindex(), -1);
}

// Lyric A lit at line 10, then none, then B: never an old row, never a lit line.
TEST(LRCView, ANewOrNoLyricShowsNoOldRowAndNoLitLine)
{
    Lyric first;
    first.parseLRCcontent(lyricOf(20));
    Lyric second;
    second.parseLRCcontent(lyricOf(20, QStringLiteral("other %1")));
    LRCView view;
    view.setColorNormal(QColor(128, 128, 128));
    view.setColorHeight(Qt::white);
    view.resize(400, 300);
    view.setParser(&first);
    view.show();
    view.updatePlayerTime(30.5f);
    ASSERT_GT(brightestIn(grabOf(view), 0, 300), 240);
    view.setParser(nullptr);
    EXPECT_EQ(brightestIn(grabOf(view), 0, 300), 0);
    view.setParser(&second);
    EXPECT_EQ(view.currentLRCindex(), -1);
    EXPECT_EQ(view.model().highlightedLRCindex(), -1);
    EXPECT_EQ(view.contentOffset(), 0);
    EXPECT_LT(brightestIn(grabOf(view), 0, 300), 160);
}

// A status text and lyric rows never show together, and the no-player status gets its hint.
TEST(LRCView, AStatusTextHidesTheRowsUnderIt)
{
    AppController controller;
    controller.applicationDidFinishLaunching();
    LRCView* view = controller.lrcView();
    view->window()->resize(400, 300);
    Lyric lyric;
    lyric.parseLRCcontent(lyricOf(20));
    controller.setParser(&lyric);
    controller.updateTime(30.5f);
    const auto rowsShown = [view] { return brightestIn(grabOf(*view->viewport()), 0, 300) > 0; };
    EXPECT_TRUE(rowsShown());
    controller.setInfo(QStringLiteral("lyric is not available"));
    EXPECT_FALSE(rowsShown());
    EXPECT_TRUE(view->hintString().isEmpty());
    controller.setInfo(QString());
    EXPECT_TRUE(rowsShown());
    controller.setInfo(QStringLiteral("iTunes is not running"));
    EXPECT_TRUE(view->findChild<QLabel*>()->text().contains(QStringLiteral("MPRIS player")));
    EXPECT_EQ(view->defaultString(), QStringLiteral("iTunes is not running"));
}

} // namespace
