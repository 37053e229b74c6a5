#include "core/platform/DistributedNotificationCenter.h"
#include "core/platform/Workspace.h"
#include "core/sources/iTunesControl.h"

#include "support/PlayerProcess.h"

#include <QDBusConnection>

#include <gtest/gtest.h>

namespace {

// Runs on a private bus that can start the simulator as com.apple.iTunes (D-Bus activation).
TEST(ITunesLaunch, StartsTheServiceThatProvidesIt)
{
    ASSERT_TRUE(QDBusConnection::sessionBus().isConnected()) << "needs a session bus";
    struct : iTunesControlDelegate {
        QList<bool> lifeCycle;
        void iTunesCB_AppLifeCycleChanged(bool alive) override { lifeCycle << alive; }
    } delegate;
    iTunesControl itunes(Workspace::sharedWorkspace(),
                         DistributedNotificationCenter::defaultCenter());
    itunes.setDelegate(&delegate);
    ASSERT_FALSE(itunes.app().isRunning());
    itunes.launchItunesApp();
    ASSERT_TRUE(waitFor([&] { return delegate.lifeCycle.contains(true); }, 15000));
    EXPECT_TRUE(itunes.app().isRunning());
    EXPECT_EQ(itunes.app().version(), QStringLiteral("12.1"));
    itunes.app().quit();
    EXPECT_TRUE(waitFor([&] { return !itunes.app().isRunning(); }));
}

} // namespace
