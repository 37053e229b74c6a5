#include "core/platform/DistributedNotificationCenter.h"
#include "core/platform/Workspace.h"
#include "core/sources/iTunesControl.h"

#include "support/PlayerProcess.h"
#include "support/QtPrinters.h"
#include "support/RoundTrip.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>

#include <gtest/gtest.h>

namespace {

using StringMap = QMap<QString, QString>;

struct Shape {
    const char* label;
    QVariantList arguments;
};

void PrintTo(const Shape& shape, std::ostream* os)
{
    *os << shape.label;
}

const QString kName = QStringLiteral("com.apple.iTunes.playerInfo");
const QString kSender = QStringLiteral("com.apple.iTunes.player");

// Posts a Post signal with any arguments, as any process on the bus may.
void postRaw(const QVariantList& arguments)
{
    QDBusMessage signal = QDBusMessage::createSignal(
        QLatin1String(DistributedNotificationCenter::kPath),
        QLatin1String(DistributedNotificationCenter::kInterface), QStringLiteral("Post"));
    signal.setArguments(arguments);
    ASSERT_TRUE(QDBusConnection::sessionBus().send(signal));
}

class NotificationShapes : public ::testing::TestWithParam<Shape> {};

// Every observer must treat a Post of another shape as noise and keep working.
TEST_P(NotificationShapes, AnotherSignatureIsNoise)
{
    ASSERT_TRUE(QDBusConnection::sessionBus().isConnected()) << "needs a session bus";
    qDBusRegisterMetaType<StringMap>();
    auto& center = DistributedNotificationCenter::defaultCenter();
    QList<QVariantMap> received;
    const auto observation = center.observe(
        kName, kSender,
        [&](const QString&, const QString&, const QVariantMap& info) { received << info; });
    // A real source listens too: its handler reads the user info.
    iTunesControl itunes(Workspace::sharedWorkspace(), center);

    postRaw(GetParam().arguments);
    center.post(kName, kSender, {{"Player State", "Stopped"}});
    ASSERT_TRUE(postedNoticesDelivered());
    ASSERT_EQ(received.size(), 1);
    EXPECT_EQ(received.first().value("Player State").toString(), QStringLiteral("Stopped"));
}

QVariant dbusVariant(const QVariant& value)
{
    return QVariant::fromValue(QDBusVariant(value));
}

using Args = QVariantList;
const QVariantMap kPlaying{{"Player State", "Playing"}};

INSTANTIATE_TEST_SUITE_P(
    Shapes, NotificationShapes,
    ::testing::Values(
        Shape{"ssa{ss}",
              Args{kName, kSender, QVariant::fromValue(StringMap{{"Player State", "Stopped"}})}},
        Shape{"ss", Args{kName, kSender}}, Shape{"s", Args{kName}}, Shape{"empty", Args()},
        Shape{"sss", Args{kName, kSender, QStringLiteral("Stopped")}},
        Shape{"iia{sv}", Args{1, 2, QVariantMap{{"Player State", "x"}}}},
        Shape{"ssv", Args{kName, kSender, dbusVariant(42)}},
        Shape{"ssas", Args{kName, kSender, QStringList{"Stopped"}}},
        Shape{"ssa{sv}s", Args{kName, kSender, kPlaying, QStringLiteral("extra")}},
        Shape{"vva{sv}", Args{dbusVariant(kName), dbusVariant(kSender), kPlaying}}));

} // namespace
