#include "core/platform/DirectPropertyRead.h"
#include "core/platform/ScriptingObject.h"

#include "support/FakePlayer.h"
#include "support/QtPrinters.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusSignature>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QElapsedTimer>

#include <functional>

#include <gtest/gtest.h>

namespace {

const QString kName = QStringLiteral("org.example.Reads");
const QString kInterface = QStringLiteral("org.example.Reads.Player");

QVariant readOverQt(const char* property)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        kName, QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    call << kInterface << QString::fromLatin1(property);
    QVariant value = QDBusConnection::sessionBus().call(call).arguments().value(0);
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

struct Typed {
    const char* label;
    std::function<QVariant()> value;
    DirectPropertyRead::Outcome direct;
};

class TypedReads : public ::testing::TestWithParam<Typed> {};

// The private connection's read gives every D-Bus type the Qt type that Qt's own read gives it;
// what it cannot convert is read through Qt, with the same result.
TEST_P(TypedReads, MatchQtsOwnRead)
{
    FakePlayer player(kName);
    player.setProperty(QStringLiteral("/"), QStringLiteral("value"), GetParam().value());
    const QVariant expected = readOverQt("value");
    ASSERT_TRUE(expected.isValid());
    const DirectPropertyRead::Result direct = DirectPropertyRead::property(
        kName, QStringLiteral("/"), kInterface, "value", ScriptingObject::kCallTimeoutMs);
    EXPECT_EQ(direct.outcome, GetParam().direct);
    const QVariant read = ScriptingObject(kName, QStringLiteral("/"), kInterface).property("value");
    EXPECT_EQ(read.metaType(), expected.metaType()) << read.metaType().name();
    EXPECT_EQ(read, expected);
}

using Outcome = DirectPropertyRead::Outcome;
INSTANTIATE_TEST_SUITE_P(
    Types, TypedReads,
    ::testing::Values(
        Typed{"Byte", [] { return QVariant::fromValue(uchar(200)); }, Outcome::Value},
        Typed{"Bool", [] { return QVariant(true); }, Outcome::Value},
        Typed{"Int16", [] { return QVariant::fromValue(short(-7)); }, Outcome::Value},
        Typed{"UInt16", [] { return QVariant::fromValue(ushort(65000)); }, Outcome::Value},
        Typed{"Int32", [] { return QVariant(-123456); }, Outcome::Value},
        Typed{"UInt32", [] { return QVariant(0x6B505350u); }, Outcome::Value},
        Typed{"Int64", [] { return QVariant(qlonglong(-1) << 40); }, Outcome::Value},
        Typed{"UInt64", [] { return QVariant(~qulonglong(0)); }, Outcome::Value},
        Typed{"Double", [] { return QVariant(83.25); }, Outcome::Value},
        Typed{"Text", [] { return QVariant(QStringLiteral("雨 — Ann")); }, Outcome::Value},
        Typed{"ObjectPath", [] { return QVariant::fromValue(QDBusObjectPath("/Songs/2")); },
              Outcome::Value},
        Typed{"Signature", [] { return QVariant::fromValue(QDBusSignature("a{sv}")); },
              Outcome::Value},
        Typed{"VariantInVariant", [] { return QVariant::fromValue(QDBusVariant(12.5)); },
              Outcome::Value},
        Typed{"Strings", [] { return QVariant(QStringLiteral("a b").split(u' ')); },
              Outcome::Unavailable}),
    [](const auto& info) { return std::string(info.param.label); });

// A name served on the reading thread's own connection would answer only once that thread
// waits no more: such a read goes through Qt, which answers it in place.
class ServedHere : public QDBusVirtualObject {
public:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(4.5))));
    }
};

TEST(ScriptingReads, ANameThisThreadServesAnswersAtOnce)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    ServedHere object;
    ASSERT_TRUE(bus.registerVirtualObject(QStringLiteral("/"), &object));
    ASSERT_TRUE(bus.registerService(kName));
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(ScriptingObject(kName, QStringLiteral("/"), kInterface).doubleProperty("location"),
              4.5);
    EXPECT_LT(timer.elapsed(), ScriptingObject::kCallTimeoutMs / 2);
    bus.unregisterService(kName);
    bus.unregisterObject(QStringLiteral("/"));
}

// The owner remembered for a name may have left before the change of owner is delivered: the
// next read reaches the new owner all the same.
TEST(ScriptingReads, ANewOwnerIsReadBeforeItsLaunchIsDelivered)
{
    const ScriptingObject object(kName, QStringLiteral("/"), kInterface);
    auto first = std::make_unique<FakePlayer>(kName);
    first->setProperty(QStringLiteral("/"), QStringLiteral("location"), 1.0);
    ASSERT_EQ(object.doubleProperty("location"), 1.0);
    first.reset();
    FakePlayer second(kName);
    second.setProperty(QStringLiteral("/"), QStringLiteral("location"), 2.0);
    EXPECT_EQ(object.doubleProperty("location"), 2.0);
}

// The reads' own connection is the one of this process that is neither Qt's nor the fake's.
QString readsConnection()
{
    QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
    const QString fake = bus->serviceOwner(kName).value();
    for (const QString& name : bus->registeredServiceNames().value())
        if (name.startsWith(u':') && name != fake &&
            name != QDBusConnection::sessionBus().baseService() &&
            bus->servicePid(name).value() == uint(QCoreApplication::applicationPid()))
            return name;
    return {};
}

// A call that somebody sends to the reads' connection is answered (with an error) at the next
// read, not left to pile up in its queue.
TEST(ScriptingReads, AStrayCallToTheReadsConnectionIsAnswered)
{
    FakePlayer player(kName);
    player.setProperty(QStringLiteral("/"), QStringLiteral("location"), 1.0);
    const ScriptingObject object(kName, QStringLiteral("/"), kInterface);
    ASSERT_EQ(object.doubleProperty("location"), 1.0);
    const QString reads = readsConnection();
    ASSERT_FALSE(reads.isEmpty());
    QDBusPendingCall stray = QDBusConnection::sessionBus().asyncCall(
        QDBusMessage::createMethodCall(reads, QStringLiteral("/"), QStringLiteral("org.example.X"),
                                       QStringLiteral("Hello")),
        1000);
    QElapsedTimer timer;
    timer.start();
    while (!stray.isFinished() && timer.elapsed() < 1000) {
        object.doubleProperty("location");
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    ASSERT_TRUE(stray.isFinished());
    EXPECT_TRUE(stray.isError());
    EXPECT_NE(stray.error().type(), QDBusError::NoReply) << "answered, not timed out";
}

} // namespace
