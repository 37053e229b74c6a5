#include "core/foundation/Translations.h"
#include "core/app/AppTexts.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibraryInfo>

#include <gtest/gtest.h>

namespace {

QString translate(const char* context, const char* key, int n = -1)
{
    return QCoreApplication::translate(context, key, nullptr, n);
}

class Translations : public ::testing::Test {
protected:
    QCoreApplication& app = *QCoreApplication::instance();
    // Other suites in this binary expect the English keys.
    void TearDown() override { foundation::installTranslations(app, QLocale::c()); }
};

} // namespace

TEST_F(Translations, SimplifiedChineseIsLoadedForZhCN)
{
    ASSERT_TRUE(foundation::installTranslations(app, QLocale(QStringLiteral("zh_CN"))));
    EXPECT_EQ(apptext::tr(apptext::kNotAvailable), QStringLiteral("暂无歌词"));
    EXPECT_EQ(apptext::tr(apptext::kPlayerNotPlaying).arg(QStringLiteral("mpv")),
              QStringLiteral("mpv 未在播放"));
    EXPECT_EQ(translate("LyricManagerWC", "Total %1 items").arg(12), QStringLiteral("共 12 项"));
    EXPECT_EQ(translate("LyricSearchWC", "%n result(s). Double-click one to use it.", 3),
              QStringLiteral("共 3 个结果，双击即可使用。"));
    EXPECT_EQ(translate("NSArrayControllerLyric", "File Name"), QStringLiteral("文件名"));
}

class OtherLocales : public Translations, public ::testing::WithParamInterface<const char*> {};

// Installed after Chinese, so a locale without a catalog must also take the Chinese one away.
TEST_P(OtherLocales, KeepTheEnglishKeys)
{
    ASSERT_TRUE(foundation::installTranslations(app, QLocale(QStringLiteral("zh_CN"))));
    EXPECT_FALSE(foundation::installTranslations(app, QLocale(QLatin1String(GetParam()))));
    EXPECT_EQ(apptext::tr(apptext::kNotAvailable), QStringLiteral("lyric is not available"));
    EXPECT_EQ(translate("LyricManagerWC", "Total %1 items"), QStringLiteral("Total %1 items"));
}

INSTANTIATE_TEST_SUITE_P(I18n, OtherLocales,
                         ::testing::Values("en_US", "en_GB", "de_DE", "zh_TW", "C"));

TEST_F(Translations, QtsOwnTextsFollowWhenInstalled)
{
    const QString qtbase =
        QLibraryInfo::path(QLibraryInfo::TranslationsPath) + QStringLiteral("/qtbase_zh_CN.qm");
    if (!QFileInfo::exists(qtbase))
        GTEST_SKIP() << "Qt's translations (qt6-translations-l10n) are not installed";
    foundation::installTranslations(app, QLocale(QStringLiteral("zh_CN")));
    EXPECT_EQ(translate("QPlatformTheme", "Cancel"), QStringLiteral("取消"));
}
