// MenuState alone: messages reach both displays and the state; one notification at a time.
#include "support/app/RecordingPorts.h"

#include "core/app/AppState.h"
#include "core/app/MenuState.h"
#include "core/settings/Settings.h"

#include "support/TempHome.h"

#include <QSettings>

#include <gtest/gtest.h>

namespace {

class CountedNotification : public NotificationPort {
public:
    explicit CountedNotification(QStringList& log)
        : m_log(log)
    {
    }
    void showTrack(const Track& t) override { m_log << "show " + t.name; }
    void disappear() override { m_log << "disappear"; }
    void close() override { m_log << "close"; }

private:
    QStringList& m_log;
};

class MenuStateTest : public ::testing::Test {
protected:
    TempHome home;
    std::unique_ptr<Settings> settings = Settings::launch(
        std::make_unique<QSettings>(home.filePath("settings.ini"), QSettings::IniFormat));
    AppState state;
    RecordingPorts ports{state};
    QStringList shown;
    MenuState menu{
        *settings, state, ports.ports(),
        MenuState::Makers{[this] { return std::make_unique<CountedNotification>(shown); }, {}}};
};

TEST_F(MenuStateTest, AMessageReachesBothDisplaysAndTheState)
{
    menu.setInfo("fetching lyrics...");
    EXPECT_EQ(ports.info, "fetching lyrics...");
    EXPECT_EQ(ports.content, "fetching lyrics...");
    EXPECT_EQ(state.status(), "fetching lyrics...");
    EXPECT_EQ(state.line(), "fetching lyrics...");
    menu.setInfo({});
    EXPECT_EQ(state.status(), "");
}

TEST_F(MenuStateTest, ANewSongsNotificationReplacesTheOneShown)
{
    menu.showSongNotification({"Rain", "Ann", {}, 200});
    menu.showSongNotification({"Snow", "Bo", {}, 100});
    EXPECT_EQ(shown, (QStringList{"show Rain", "disappear", "close", "show Snow"}));
    menu.notificationCanBeRemoved();
    menu.notificationCanBeRemoved(); // nothing left to remove
    EXPECT_EQ(shown.size(), 5);
}

} // namespace
