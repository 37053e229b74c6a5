#include "core/settings/Settings.h"
#include "gui/display/BackgroundDragMover.h"
#include "gui/display/HUDWindow.h"
#include "gui/display/OffsetNotice.h"
#include "gui/display/SingleLineModeController.h"
#include "gui/display/SingleLineView.h"
#include "gui/display/VSEffectLabel.h"
#include "gui/display/WindowFrameAutosave.h"
#include "gui/display/WrappedText.h"
#include "support/TempHome.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QTest>

namespace {

class CountingLabel : public VSEffectLabel {
public:
    int draws = 0;
    int paints = 0;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        ++paints;
        VSEffectLabel::paintEvent(event);
    }
    void drawPlainText(QPainter& painter, const QRectF& rect, const QColor& color,
                       TextMode mode) override
    {
        ++draws;
        VSEffectLabel::drawPlainText(painter, rect, color, mode);
    }
};

struct EffectCase {
    bool glow;
    bool stroke;
    int draws;
};
class EffectDraws : public ::testing::TestWithParam<EffectCase> {};

TEST_P(EffectDraws, TextIsDrawnOncePerEffectPass)
{
    CountingLabel label;
    label.resize(200, 40);
    label.setText(QStringLiteral("glow"));
    if (GetParam().glow)
        label.setEffectGlow(Qt::red, {0, 0}, 4);
    if (GetParam().stroke)
        label.setEffectStroke(Qt::white, 1);
    label.grab();
    EXPECT_EQ(label.draws, GetParam().draws);
}
INSTANTIATE_TEST_SUITE_P(Effects, EffectDraws,
                         ::testing::Values(EffectCase{false, false, 1}, EffectCase{true, false, 1},
                                           EffectCase{false, true, 2}, EffectCase{true, true, 3}));

TEST(VSEffectLabel, SettingTheStrokeAloneDoesNotRepaint)
{
    CountingLabel label;
    label.resize(200, 40);
    label.setText(QStringLiteral("text"));
    label.show();
    QApplication::processEvents();
    const int before = label.paints;
    label.setEffectStroke(Qt::white, 0.1);
    QApplication::processEvents();
    EXPECT_EQ(label.paints, before);
    EXPECT_TRUE(label.isEnableStroke());
    label.setTextColor(Qt::gray);
    label.repaint(); // what the scheduled update does, made synchronous for the count
    EXPECT_GT(label.paints, before);
}

TEST(WrappedText, OutlinesAreEachFontsOwnWhateverWasOutlinedBefore)
{
    QFont small;
    small.setPixelSize(12);
    QFont large = small;
    large.setPixelSize(36);
    const QRectF box(0, 0, 400, 100);
    const QString text = QStringLiteral("Ag");
    const QPainterPath first = WrappedText(text, small, 400).path(box); // remembered from here
    const QPainterPath big = WrappedText(text, large, 400).path(box);
    EXPECT_GT(big.boundingRect().height(), 2.5 * first.boundingRect().height());
    EXPECT_EQ(WrappedText(text, small, 400).path(box), first);
}

class SingleLineTest : public ::testing::Test {
protected:
    TempHome home;
    std::unique_ptr<Settings> settings = Settings::launch(
        std::make_unique<QSettings>(home.filePath(QStringLiteral("s.ini")), QSettings::IniFormat));
};

TEST_F(SingleLineTest, FirstLaunchIsCentred200AboveTheBottomThenRemembered)
{
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    {
        SingleLineModeController controller(settings.get());
        QWidget* window = controller.window();
        EXPECT_EQ(window->geometry(),
                  QRect(screen.x() + (screen.width() - 2 * screen.width() / 3) / 2,
                        screen.y() + screen.height() - 280, 2 * screen.width() / 3, 80));
        EXPECT_TRUE(window->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        EXPECT_TRUE(window->windowFlags().testFlag(Qt::FramelessWindowHint));
        EXPECT_TRUE(window->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
        EXPECT_TRUE(window->testAttribute(Qt::WA_ShowWithoutActivating));
        window->show();
        window->move(screen.x() + 10, screen.y() + 20); // the user drags it
    }
    const QVariant saved = settings->store().settings().value(
        WindowFrameAutosave::keyFor(QLatin1String(SingleLineModeController::kFrameName)));
    EXPECT_EQ(saved.toRect().topLeft(), screen.topLeft() + QPoint(10, 20));
    SingleLineModeController again(settings.get());
    EXPECT_EQ(again.window()->pos(), screen.topLeft() + QPoint(10, 20));
}

// The notice is whole over a short line, and the window's shape gives its place back after.
TEST_F(SingleLineTest, TheOffsetNoticeIsWholeOverAShortLineAndThenGone)
{
    SingleLineModeController controller(settings.get());
    controller.setContent(QStringLiteral("Hi"));
    QWidget* window = controller.window();
    window->show();
    OffsetNotice notice([window] { return window; });
    QObject::connect(&notice, &OffsetNotice::areaChanged, &controller,
                     &SingleLineModeController::setOverlay);
    const QRegion line = window->mask();
    notice.show(0.3);
    ASSERT_NE(notice.label(), nullptr);
    EXPECT_EQ(notice.label()->text(), QStringLiteral("Offset +0.3 s"));
    const QRect area = notice.label()->geometry();
    EXPECT_NE(line.intersected(area), QRegion(area)) << "the line alone would cut it";
    EXPECT_EQ(window->mask().intersected(area), QRegion(area));
    EXPECT_LT(area.width(), window->width());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !notice.label(); }, 10000));
    EXPECT_EQ(window->mask(), line);
}

// Moves follow a drag past the drag distance; a click or a wobble moves nothing.
TEST(BackgroundDrag, OnlyADragMovesTheWindow)
{
    QWidget window;
    window.setGeometry(100, 100, 200, 50);
    new BackgroundDragMover(&window);
    window.show();
    const auto send = [&](QEvent::Type type, QPoint global, Qt::MouseButtons buttons) {
        QMouseEvent event(type, QPointF(global - window.pos()), QPointF(global),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &event);
    };
    const QPoint start = window.pos();
    const QPoint at = start + QPoint(20, 20);
    send(QEvent::MouseButtonPress, at, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, at, Qt::NoButton);
    send(QEvent::MouseMove, at + QPoint(50, 0), Qt::NoButton);
    EXPECT_EQ(window.pos(), start) << "a click does not pick the window up";
    send(QEvent::MouseButtonPress, at, Qt::LeftButton);
    send(QEvent::MouseMove, at + QPoint(2, 1), Qt::LeftButton);
    EXPECT_EQ(window.pos(), start);
    send(QEvent::MouseMove, at + QPoint(40, 10), Qt::LeftButton);
    send(QEvent::MouseButtonRelease, at + QPoint(40, 10), Qt::NoButton);
    EXPECT_EQ(window.pos(), start + QPoint(40, 10));
}

QImage pictureOf(SingleLineView& view)
{
    return view.grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

TEST_F(SingleLineTest, ThePlateIsBlackAt75PercentTenBeyondTheText)
{
    SingleLineModeController controller(settings.get());
    controller.setContent(QStringLiteral("Lanterns 河边的灯笼"));
    SingleLineView* view = controller.view();
    view->resize(1000, 80);
    const QImage image = pictureOf(*view);
    const QRectF text = view->textRect();
    ASSERT_FALSE(text.isEmpty());
    const QRgb plate = image.pixel(int(text.left()) - 5, int(text.center().y()));
    EXPECT_NEAR(qAlpha(plate), 191, 2);
    EXPECT_EQ(qRed(plate), 0);
    EXPECT_EQ(qAlpha(image.pixel(int(text.left()) - 12, int(text.center().y()))), 0);
    EXPECT_EQ(qAlpha(image.pixel(2, 2)), 0);
}

TEST_F(SingleLineTest, WithoutThePlateTheShadowReachesBeyondTheText)
{
    settings->setIsShowSingleLineBG(false);
    SingleLineModeController controller(settings.get());
    controller.setContent(QStringLiteral("Lanterns on the river"));
    SingleLineView* view = controller.view();
    view->resize(1000, 80);
    const QImage image = pictureOf(*view);
    const QRectF text = view->textRect();
    const QRgb shadow = image.pixel(int(text.left()) - 3, int(text.center().y()));
    EXPECT_GT(qAlpha(shadow), 0);
    EXPECT_LT(qGray(shadow), 60);
    int white = 0;
    for (int x = int(text.left()); x < int(text.right()); ++x)
        white += qGray(image.pixel(x, int(text.center().y()))) > 240 ? 1 : 0;
    EXPECT_GT(white, 10);
}

// Only the plate (or the text and its shadow) is shown and takes clicks; a blank strip nothing.
TEST_F(SingleLineTest, TheWindowIsShapedToWhatIsDrawn)
{
    SingleLineModeController controller(settings.get());
    controller.setContent(QStringLiteral("Lanterns"));
    QWidget* window = controller.window();
    window->show();
    const QRectF text = controller.view()->textRect();
    EXPECT_EQ(window->mask(), QRegion(text.adjusted(-10, -10, 10, 10).toAlignedRect()));
    EXPECT_LT(window->mask().boundingRect().width(), window->width() / 2);
    controller.setContent(QString());
    EXPECT_EQ(window->mask().boundingRect().size(), QSize(1, 1));
    settings->setIsShowSingleLineBG(false);
    controller.updateFromSettings();
    controller.setContent(QStringLiteral("Lanterns"));
    const QRect shaped = window->mask().boundingRect();
    EXPECT_TRUE(shaped.contains(text.adjusted(-15, 0, 15, 0).toAlignedRect()));
    EXPECT_LT(shaped.width(), window->width() / 2);
}

TEST_F(SingleLineTest, EmptyLongAndUnknownFontsStayInside)
{
    SingleLineModeController controller(settings.get());
    EXPECT_EQ(controller.view(), nullptr); // built on first use
    controller.setContent(QString());
    SingleLineView* view = controller.view();
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->renders(), 0);
    for (const QString& text : {QString(5000, QLatin1Char('w')),
                                QStringLiteral("word ").repeated(1000), QStringLiteral("   ")}) {
        QFont font(QStringLiteral("No Such Font 123"));
        font.setPointSize(30);
        view->setFont(font);
        controller.setContent(text);
        view->resize(600, 80);
        pictureOf(*view);
        // The strip may size itself to the text within the screen; the text stays inside it.
        EXPECT_GE(view->textRect().top(), 0);
        EXPECT_LE(view->textRect().bottom(), view->height());
        EXPECT_LE(view->textRect().width(), view->width());
        EXPECT_LE(view->width(), view->screen()->availableGeometry().width());
    }
}

TEST(HUDWindow, TitleAndResizeRepaintTheFrame)
{
    HUDWindow hud;
    hud.resize(300, 200);
    hud.show(); // a hidden window hears of its size when shown
    const int builds = hud.backgroundBuilds();
    hud.setTitle(QStringLiteral("A song"));
    EXPECT_EQ(hud.backgroundBuilds(), builds + 1);
    hud.resize(320, 200);
    EXPECT_EQ(hud.backgroundBuilds(), builds + 2);

    const QImage image = hud.sizedHUDBackground().toImage().convertToFormat(QImage::Format_ARGB32);
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);     // round top corner
    EXPECT_EQ(qAlpha(image.pixel(0, 199)), 0);   // round bottom corner
    EXPECT_GT(qAlpha(image.pixel(0, 100)), 150); // square body edge
    const QRgb title = image.pixel(5, 10);
    const QRgb body = image.pixel(160, 100);
    EXPECT_NEAR(qAlpha(title), 191, 2);
    EXPECT_GT(qRed(title), qRed(body)); // the title strip is lighter
}

TEST(HUDWindow, TheCloseWidgetHidesThePanel)
{
    HUDWindow hud;
    hud.resize(300, 200);
    hud.addCloseWidget();
    ASSERT_NE(hud.closeWidget(), nullptr);
    EXPECT_EQ(hud.closeWidget()->geometry(), QRect(3, 3, 13, 13));
    hud.show();
    hud.closeWidget()->click();
    EXPECT_FALSE(hud.isVisible());
}

TEST(HUDWindow, TinyPanelsStillDrawTheirTitle)
{
    HUDWindow hud;
    hud.show();
    hud.setTitle(QString(3000, QLatin1Char('t')));
    for (const QSize size : {QSize(300, 19), QSize(300, 5), QSize(1, 1)}) {
        hud.resize(size);
        EXPECT_EQ(hud.sizedHUDBackground().size(), size * hud.devicePixelRatioF());
    }
    hud.setFrame(QRect(10, 10, 200, 100), true, false);
    EXPECT_EQ(hud.size(), QSize(200, 100));
    EXPECT_FALSE(hud.forceDisplay());
}

} // namespace
