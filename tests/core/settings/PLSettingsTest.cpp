#include "core/settings/PLSettings.h"
#include "core/settings/KeyedArchive.h"
#include "core/settings/NSFontTransformer.h"

#include "support/QtPrinters.h"
#include "support/TempHome.h"

#include <QColor>

#include <limits>

#include <gtest/gtest.h>

namespace {

// A settings class with no fields at all: in dynamic mode everything goes to the store.
class BareSettings : public PLSettings {
public:
    using PLSettings::PLSettings;
    static void setupRoutes()
    {
        setupProperty(QStringLiteral("volume"), PLSettingType::Float);
        setupProperty(QStringLiteral("muted"), PLSettingType::Bool);
        setupProperty(QStringLiteral("count"), QStringLiteral("storedCount"), PLSettingType::Int,
                      false);
        setupProperty(QStringLiteral("title"), PLSettingType::Object);
        setupPropertyWithArchivedType(QStringLiteral("tint"));
        setupPropertyWithTransformer(QStringLiteral("font"), NSFontTransformer::staticMetaObject);
        setupProperty(QStringLiteral("x"), PLSettingType::Int);
    }
    int migratedFrom = -1;
    int version() const override { return 3; }
    void migrateFromOldVersion(int stored) override { migratedFrom = stored; }
};

class NotATransformer : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE NotATransformer() = default;
};

class Framework : public ::testing::Test {
protected:
    TempHome home;
    QString file = home.filePath(QStringLiteral("settings.ini"));

    void SetUp() override { PLSettings::initializeClass(&BareSettings::setupRoutes); }
    std::unique_ptr<BareSettings> open()
    {
        auto s =
            std::make_unique<BareSettings>(std::make_unique<QSettings>(file, QSettings::IniFormat));
        s->init();
        return s;
    }
};

TEST_F(Framework, SetterNamesChangeOnlyTheFirstCharacter)
{
    EXPECT_EQ(PLSettingProperty::setterNameSEL("lyricFont"), QStringLiteral("setLyricFont:"));
    EXPECT_EQ(PLSettingProperty::setterNameSEL("isSaveLRCtoDisk"),
              QStringLiteral("setIsSaveLRCtoDisk:"));
    EXPECT_EQ(PLSettingProperty::setterNameSEL("x"), QStringLiteral("setX:"));
}

TEST_F(Framework, RespondsOnlyToRegisteredAccessorNames)
{
    auto s = open();
    EXPECT_TRUE(s->respondsToSelector("volume"));
    EXPECT_TRUE(s->respondsToSelector("setVolume:"));
    EXPECT_TRUE(s->respondsToSelector("setCount:"));
    EXPECT_FALSE(s->respondsToSelector("storedCount"));
    EXPECT_FALSE(s->respondsToSelector("synchronize"));
    EXPECT_FALSE(s->respondsToSelector("setVolume"));
    EXPECT_TRUE(PLSettings::isSetterProperty("setVolume:"));
    EXPECT_FALSE(PLSettings::isSetterProperty("volume"));
}

TEST_F(Framework, SignaturesCarryTheTypeLetterAndANameSlot)
{
    auto s = open();
    EXPECT_EQ(s->methodSignatureForSelector("volume"), QStringLiteral("f^v^c^@"));
    EXPECT_EQ(s->methodSignatureForSelector("setMuted:"), QStringLiteral("v^v^cc@"));
    EXPECT_EQ(s->methodSignatureForSelector("count"), QStringLiteral("i^v^c^@"));
    EXPECT_EQ(s->methodSignatureForSelector("setTitle:"), QStringLiteral("v^v^c@@"));
    EXPECT_TRUE(s->methodSignatureForSelector("reset").isNull());
}

TEST_F(Framework, DynamicModeRoutesByNameToTheStore)
{
    auto s = open();
    EXPECT_EQ(s->forwardInvocation("muted"), QVariant(false));
    EXPECT_FALSE(s->forwardInvocation("title").isValid());
    EXPECT_FALSE(s->forwardInvocation("tint").isValid());

    s->forwardInvocation("setVolume:", 1.5);
    s->forwardInvocation("setCount:", 42);
    s->forwardInvocation("setTitle:", QStringLiteral("hello"));
    s->forwardInvocation("setTint:", QColor(Qt::red));
    s->forwardInvocation("setFont:", QFont(QStringLiteral("Serif")));
    EXPECT_EQ(s->forwardInvocation("volume"), QVariant(1.5f));
    EXPECT_EQ(s->getFloatValueFor("volume"), 1.5f);
    EXPECT_EQ(s->forwardInvocation("count"), QVariant(42));
    EXPECT_EQ(s->store().integerForKey("storedCount"), 42); // the key, not the name
    EXPECT_EQ(s->forwardInvocation("title"), QVariant(QStringLiteral("hello")));
    EXPECT_EQ(s->forwardInvocation("tint").value<QColor>(), QColor(Qt::red));
    // The transformer is not applied on this path: the font stays a font.
    EXPECT_EQ(s->forwardInvocation("font").typeId(), QMetaType::QFont);
    EXPECT_THROW(s->forwardInvocation("setNothing:", 1), std::invalid_argument);
}

TEST_F(Framework, FirstAndLaterLaunchesCountAndStampTheVersion)
{
    QDateTime installed;
    {
        auto s = open();
        EXPECT_TRUE(s->isFirstLaunched());
        EXPECT_EQ(s->initedCount(), 1);
        installed = s->installedAt();
        EXPECT_LE(std::abs(installed.secsTo(QDateTime::currentDateTime())), 5);
        EXPECT_EQ(s->migratedFrom, -1);
        s->synchronize();
    }
    auto again = open();
    EXPECT_FALSE(again->isFirstLaunched());
    EXPECT_EQ(again->initedCount(), 2);
    EXPECT_EQ(again->installedAt(), installed);
    EXPECT_EQ(again->migratedFrom, -1);
    EXPECT_EQ(again->store().integerForKey("PLSettings"), 3);
}

class VersionChange : public Framework, public ::testing::WithParamInterface<int> {};

TEST_P(VersionChange, AnyDifferenceMigratesFromTheStoredVersion)
{
    {
        QSettings raw(file, QSettings::IniFormat);
        raw.setValue("PLSettings", GetParam());
    }
    auto s = open();
    EXPECT_EQ(s->migratedFrom, GetParam());
    EXPECT_EQ(s->store().integerForKey("PLSettings"), 3);
}

INSTANTIATE_TEST_SUITE_P(Versions, VersionChange, ::testing::Values(0, 2, 4, 99));

TEST_F(Framework, TransformerMustConformToTheProtocol)
{
    try {
        PLSettings::setupPropertyWithTransformer("bad", NotATransformer::staticMetaObject);
        FAIL() << "no exception";
    } catch (const PLSettingsException& e) {
        EXPECT_EQ(
            e.name(),
            QStringLiteral(
                "Transformer Class have to conforms to Protocol PLSettingTransformerProtocol"));
    }
    EXPECT_EQ(open()->propertyForGetter("bad"), nullptr);
}

TEST_F(Framework, InitializingAClassReplacesTheRegistryButNotAnObjectsProperties)
{
    auto s = open();
    EXPECT_NE(s->propertyForGetter("volume"), nullptr);
    PLSettings::initializeClass(nullptr);
    EXPECT_TRUE(PLSettings::registeredProperties()->empty());
    EXPECT_TRUE(open()->properties().empty());
    // The earlier object still routes by the list it was made with.
    s->forwardInvocation("setVolume:", 2.5);
    EXPECT_EQ(s->getFloatValueFor("volume"), 2.5f);
    EXPECT_EQ(s->properties().size(), 7u);
}

TEST_F(Framework, StartCountStopsAtTheLargestInteger)
{
    for (const int stored :
         {std::numeric_limits<int>::max() - 1, std::numeric_limits<int>::max()}) {
        {
            QSettings raw(file, QSettings::IniFormat);
            raw.setValue("PLSettings", 3);
            raw.setValue("PLSettingInitCount", stored);
        }
        EXPECT_EQ(open()->initedCount(), std::numeric_limits<int>::max());
    }
}

TEST(KeyedArchive, ColoursSurviveAndGarbageReadsAsNothing)
{
    const QColor c = QColor::fromRgbF(0.25f, 0.5f, 0.75f, 0.5f);
    EXPECT_EQ(KeyedArchive::unarchiveObjectWithData(KeyedArchive::archivedDataWithRootObject(c))
                  .value<QColor>(),
              c);
    EXPECT_FALSE(
        KeyedArchive::unarchiveObjectWithData(KeyedArchive::archivedDataWithRootObject(QColor()))
            .isValid());
    for (const QByteArray& junk : {QByteArray(), QByteArray("{"), QByteArray("[1,2]"),
                                   QByteArray(R"({"$archiver":"other","root":{}})")})
        EXPECT_FALSE(KeyedArchive::unarchiveObjectWithData(junk).isValid());
}

} // namespace

#include "PLSettingsTest.moc"
