// A property read on the main thread goes over the reader's own connection; the same read from
// another thread takes Qt's path. Both must give the same value of the same type.
#include "platform/ScriptingObject.h"

#include "support/FakePlayer.h"
#include "support/QtPrinters.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <functional>
#include <thread>

#include <gtest/gtest.h>

namespace {

const QString kBus = QStringLiteral("com.morvane.DirectReadTest");

struct Case {
    const char* label;
    std::function<QVariantList()> reply; // the Get answer's arguments
    int calls = 2;                       // a container is read again Qt's way: Get changes nothing
};

void PrintTo(const Case& c, std::ostream* os)
{
    *os << c.label;
}

QVariantList value(const QVariant& v)
{
    return {QVariant::fromValue(QDBusVariant(v))};
}

class DirectRead : public ::testing::TestWithParam<Case> {};

TEST_P(DirectRead, AnswersAsQtsPathDoes)
{
    ASSERT_TRUE(QDBusConnection::sessionBus().isConnected()) << "needs a session bus";
    FakePlayer fake(kBus);
    fake.setReply("/", "p", GetParam().reply());
    const ScriptingObject object(kBus, QStringLiteral("/"), QStringLiteral("com.morvane.Test"));

    const int before = fake.callsReceived();
    const QVariant direct = object.property("p");
    QVariant viaQt;
    std::thread([&] { viaQt = object.property("p"); }).join();
    EXPECT_EQ(fake.callsReceived() - before, GetParam().calls);
    EXPECT_EQ(direct.metaType(), viaQt.metaType()) << direct.metaType().name();
    EXPECT_EQ(direct, viaQt);
}

INSTANTIATE_TEST_SUITE_P(
    Types, DirectRead,
    ::testing::Values(Case{"double", [] { return value(83.7); }},
                      Case{"int", [] { return value(-7); }},
                      Case{"uint", [] { return value(0x6B505350u); }},
                      Case{"int64", [] { return value(qlonglong(1) << 40); }},
                      Case{"uint64", [] { return value(qulonglong(3)); }},
                      Case{"bool", [] { return value(true); }},
                      Case{"byte", [] { return value(QVariant::fromValue(uchar(200))); }},
                      Case{"int16", [] { return value(QVariant::fromValue(short(-3))); }},
                      Case{"uint16", [] { return value(QVariant::fromValue(ushort(3))); }},
                      Case{"string", [] { return value(QStringLiteral("Rain 雨")); }},
                      Case{"object path",
                           [] { return value(QVariant::fromValue(QDBusObjectPath("/T/1"))); }},
                      Case{"string list",
                           [] {
                               return value(QStringList{"a", "b"});
                           },
                           3},
                      Case{"nested variant",
                           [] { return value(QVariant::fromValue(QDBusVariant(QVariant(2.5)))); }},
                      Case{"not a variant", [] { return QVariantList{QStringLiteral("bare")}; }},
                      Case{"two answers",
                           [] {
                               return QVariantList{1, 2};
                           }}),
    [](const auto& info) {
        std::string name = info.param.label;
        std::erase(name, ' ');
        return name;
    });

} // namespace
