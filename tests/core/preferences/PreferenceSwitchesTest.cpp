#include "core/preferences/PreferenceSwitches.h"

#include "core/settings/Settings.h"

#include "support/TempHome.h"

#include <QMetaProperty>
#include <QSet>

#include <gtest/gtest.h>

// Found by argument-dependent lookup, so beside the type: the parameter's name.
void PrintTo(const PreferenceSwitch& s, std::ostream* os)
{
    *os << s.property;
}

namespace {

class Switches : public ::testing::TestWithParam<PreferenceSwitch> {
protected:
    TempHome home;
    ScopedUserFolders folders{home};
    std::unique_ptr<Settings> settings = Settings::launch(
        std::make_unique<QSettings>(home.filePath(QStringLiteral("s.ini")), QSettings::IniFormat));
};

TEST_P(Switches, ReadAndWriteTheirSettingByName)
{
    const char* name = GetParam().property;
    const int index = settings->metaObject()->indexOfProperty(name);
    ASSERT_GE(index, 0);
    const QMetaProperty property = settings->metaObject()->property(index);
    for (bool on : {true, false, true}) {
        PreferenceSwitches::setValue(*settings, name, on);
        EXPECT_EQ(property.read(settings.get()).toBool(), on);
        EXPECT_EQ(PreferenceSwitches::value(*settings, name), on);
    }
}

INSTANTIATE_TEST_SUITE_P(All, Switches, ::testing::ValuesIn(PreferenceSwitches::all()));

TEST(PreferenceSwitches, CoverEveryStoredBooleanSettingOnce)
{
    QSet<QString> offered;
    for (const PreferenceSwitch& s : PreferenceSwitches::all()) {
        EXPECT_FALSE(offered.contains(QString::fromLatin1(s.property))) << s.property;
        offered.insert(QString::fromLatin1(s.property));
        EXPECT_TRUE(s.panel >= 0 && s.panel <= 2) << s.property;
    }
    // The plug-in flag is set by the loader at every start, never by the user.
    const QSet<QString> stored{"traditionchinese",   "launchAndQuitWithiTunes",
                               "isSaveLRCtoDisk",    "isSaveLRCtoTrackTags",
                               "isShowSingleLineBG", "isShowChangeSongNotify"};
    EXPECT_EQ(offered, stored);
}

TEST(PreferenceSwitches, UnknownOrNonBooleanNamesAreHarmless)
{
    TempHome home;
    ScopedUserFolders folders{home};
    auto settings = Settings::launch(
        std::make_unique<QSettings>(home.filePath(QStringLiteral("s.ini")), QSettings::IniFormat));
    settings->setLyricStyle(1);
    PreferenceSwitches::setValue(*settings, "lyricStyle", false);
    PreferenceSwitches::setValue(*settings, "noSuchSetting", true);
    EXPECT_EQ(settings->lyricStyle(), 1);
    EXPECT_FALSE(PreferenceSwitches::value(*settings, "lyricStyle"));
    EXPECT_FALSE(PreferenceSwitches::value(*settings, "noSuchSetting"));
}

} // namespace
