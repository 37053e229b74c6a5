#include "gui/windows/LyricEditorWindow.h"

#include <QElapsedTimer>
#include <QTableWidget>
#include <QTest>

#include <gtest/gtest.h>

namespace {

// The editor on a driven clock: the test sets the play time, Space and Backspace do the rest.
class LyricEditorWindowTest : public ::testing::Test {
protected:
    double now = 0.0;
    QString saved;
    std::vector<double> seeks;
    LyricEditorWindow window{{[this] { return now; },
                              [this](double s, const std::function<void(bool)>& done) {
                                  seeks.push_back(s);
                                  done(true);
                              },
                              [this](const QString& lrc) -> std::optional<QString> {
                                  saved = lrc;
                                  return std::nullopt;
                              },
                              [] { return std::nullopt; }}};

    void SetUp() override
    {
        window.open(QStringLiteral("one\ntwo\nthree"), QStringLiteral("Song - Singer"));
        window.show();
        window.activateWindow(); // shortcuts (Ctrl+S, Ctrl+Z) go to the active window
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        window.table()->setFocus();
    }
    void keyAt(double seconds, Qt::Key key)
    {
        now = seconds;
        QTest::keyClick(window.table(), key);
    }
};

TEST_F(LyricEditorWindowTest, TappingAlongTimesThePlainLyricAndSaves)
{
    keyAt(1.0, Qt::Key_Space);
    keyAt(2.5, Qt::Key_Space);
    keyAt(3.0, Qt::Key_Backspace); // the second stamp was early: again
    keyAt(2.75, Qt::Key_Space);
    keyAt(4.125, Qt::Key_Space);
    EXPECT_EQ(window.table()->item(1, 0)->text(), QStringLiteral("00:02.75"));
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(saved, QStringLiteral("[00:01.00]one\n[00:02.75]two\n[00:04.13]three\n"));

    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(window.table()->item(2, 0)->text(), QString());

    Q_EMIT window.table()->cellDoubleClicked(0, 1);
    EXPECT_EQ(seeks, std::vector<double>{1.0});
}

TEST_F(LyricEditorWindowTest, ALongLyricOpensAndTakesStamps)
{
    QString text;
    for (int i = 0; i < 500; ++i)
        text += QStringLiteral("line %1\n").arg(i);
    QElapsedTimer opening;
    opening.start();
    window.open(text, {});
    EXPECT_LT(opening.elapsed(), 1000); // a generous bound; docs/performance.md has the figure
    window.table()->setFocus();
    keyAt(7.0, Qt::Key_Space);
    EXPECT_EQ(window.model().draft().line(0).ms, 7000);
    EXPECT_EQ(window.model().selected(), 1);
}

} // namespace
