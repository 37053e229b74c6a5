#include "gui/preferences/PLTabPreferenceControl.h"
#include "gui/preferences/PLTabPreferenceDelegate.h"

#include <QAction>
#include <QToolBar>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

// Three panels of different heights; records what it is told.
class Panels : public PLTabPreferenceDelegate {
public:
    explicit Panels(QWidget* owner)
    {
        for (int height : {120, 320, 200}) {
            auto* view = new QWidget(owner);
            view->setFixedSize(360, height);
            view->hide();
            views.append(view);
        }
    }
    int countOfPreferencePanels() const override { return int(views.size()); }
    QString titleForPreferencePanelAt(int index) const override
    {
        return QStringLiteral("Panel %1").arg(index);
    }
    QIcon imageForPreferencePanelAt(int) const override { return {}; }
    QWidget* panelViewForPreferencePanelAt(int index) const override
    {
        return index >= 0 && index < views.size() ? views.at(index) : nullptr;
    }
    void prefViewWillAppear(QWidget*, int index) override
    {
        log.append(QStringLiteral("will %1").arg(index));
    }
    void prefViewDidAppear(QWidget*, int index) override
    {
        log.append(QStringLiteral("did %1").arg(index));
    }

    QList<QWidget*> views;
    QStringList log;
};

class TabControl : public ::testing::Test {
protected:
    PLTabPreferenceControl window;
    Panels panels{&window};

    void SetUp() override
    {
        window.setDelegate(&panels);
        window.windowDidLoad();
        window.move(300, 200);
        window.show();
    }
};

TEST_F(TabControl, BuildsOneItemPerPanelAndShowsTheFirst)
{
    EXPECT_EQ(window.prefIdentifyAry(), QStringList({"0", "1", "2"}));
    EXPECT_EQ(window.toolbar()->objectName(), "PLTabPreferenceControl");
    ASSERT_EQ(window.toolbar()->actions().size(), 3);
    EXPECT_EQ(window.toolbar()->actions().at(2)->text(), "Panel 2");
    EXPECT_EQ(window.centralWidget(), panels.views.at(0));
    EXPECT_EQ(window.windowTitle(), "Panel 0");
    EXPECT_EQ(panels.log, QStringList({"will 0", "did 0"}));
    EXPECT_EQ(window.toolbarItemForIdentifier(QStringLiteral("7")), nullptr);
}

TEST_F(TabControl, SwitchingKeepsTheTopEdgeAndTakesThePanelsHeight)
{
    const int top = window.geometry().top();
    const int left = window.geometry().left();
    int lastHeight = window.height();
    for (int index : {1, 2, 0, 1}) {
        window.toolbar()->actions().at(index)->trigger();
        EXPECT_EQ(window.centralWidget(), panels.views.at(index));
        EXPECT_EQ(window.windowTitle(), QStringLiteral("Panel %1").arg(index));
        EXPECT_EQ(window.selectedPanel(), index);
        EXPECT_EQ(window.geometry().top(), top);
        EXPECT_EQ(window.geometry().left(), left);
        EXPECT_NE(window.height(), lastHeight);
        EXPECT_EQ(window.height() - window.toolbar()->height(), panels.views.at(index)->height());
        lastHeight = window.height();
    }
    // The panel left behind stays with the window, hidden.
    EXPECT_EQ(panels.views.at(0)->parentWidget(), &window);
    EXPECT_FALSE(panels.views.at(0)->isVisible());
}

TEST_F(TabControl, TheShownPanelOrAMissingOneChangesNothing)
{
    window.setWindowTitle(QStringLiteral("kept"));
    panels.log.clear();
    const QSize size = window.size();
    window.selectPanelAtIndex(0);
    window.toolbar()->actions().at(0)->trigger();
    window.selectPanelAtIndex(3);
    window.selectPanelAtIndex(-1);
    EXPECT_EQ(window.windowTitle(), "kept");
    EXPECT_TRUE(panels.log.isEmpty());
    EXPECT_EQ(window.size(), size);
    EXPECT_TRUE(window.toolbar()->actions().at(0)->isChecked());
}

TEST(TabControlWithoutDelegate, HasNoPanels)
{
    PLTabPreferenceControl window;
    window.windowDidLoad();
    window.selectPanelAtIndex(0);
    EXPECT_TRUE(window.prefIdentifyAry().isEmpty());
    EXPECT_EQ(window.selectedPanel(), -1);
}

} // namespace
