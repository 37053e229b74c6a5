#include "core/preferences/HelpPages.h"

#include "core/settings/ServiceAddresses.h"

#include "support/TempHome.h"

#include <gtest/gtest.h>

namespace {

struct Below {
    const char* helpPage;
    const char* expected;
};

class HelpPageAddresses : public ::testing::TestWithParam<Below> {};

TEST_P(HelpPageAddresses, AddOneSegment)
{
    EXPECT_EQ(HelpPages::below(QString::fromUtf8(GetParam().helpPage), QStringLiteral("feedback"))
                  .toString(),
              QString::fromUtf8(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(
    Forms, HelpPageAddresses,
    ::testing::Values(Below{"https://versewick.net/help", "https://versewick.net/help/feedback"},
                      Below{"https://versewick.net/help//", "https://versewick.net/help/feedback"},
                      Below{"http://127.0.0.1:8080", "http://127.0.0.1:8080/feedback"},
                      Below{" example.org/docs ", "http://example.org/docs/feedback"}));

TEST(HelpPages, EveryPageFollowsTheStoredHelpAddress)
{
    TempHome home;
    auto store =
        std::make_unique<QSettings>(home.filePath(QStringLiteral("s.ini")), QSettings::IniFormat);
    store->setValue(ServiceAddresses::kHelpPageKey, QStringLiteral("http://127.0.0.1:9/h"));
    const ServiceAddresses addresses(std::move(store));
    EXPECT_EQ(HelpPages::feedback(addresses).toString(), "http://127.0.0.1:9/h/feedback");
    EXPECT_EQ(HelpPages::jukoraDownload(addresses).toString(), "http://127.0.0.1:9/h/jukora");
    EXPECT_EQ(HelpPages::lyricDownloadTutorial(addresses).toString(),
              "http://127.0.0.1:9/h/download-lyrics");
}

} // namespace
