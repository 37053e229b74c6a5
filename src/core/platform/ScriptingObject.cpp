#include "core/platform/ScriptingObject.h"

#include "core/platform/DirectPropertyRead.h"
#include "core/platform/UnresponsivePeers.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <cmath>
#include <limits>

namespace {

QDBusMessage callBlocking(const QDBusMessage& call)
{
    UnresponsivePeers& peers = UnresponsivePeers::shared();
    if (peers.isUnresponsive(call.service()))
        return call.createErrorReply(QDBusError::NoReply, QStringLiteral("not answering"));
    const QDBusMessage reply =
        QDBusConnection::sessionBus().call(call, QDBus::Block, ScriptingObject::kCallTimeoutMs);
    peers.noteReply(call, reply);
    return reply;
}

} // namespace

ScriptingObject::ScriptingObject(QString busName, QString path, QString interface)
    : m_busName(std::move(busName))
    , m_path(std::move(path))
    , m_interface(std::move(interface))
{
}

QVariant ScriptingObject::property(const char* name) const
{
    if (isNull())
        return {};
    UnresponsivePeers& peers = UnresponsivePeers::shared();
    if (peers.isUnresponsive(m_busName))
        return {};
    const DirectPropertyRead::Result direct =
        DirectPropertyRead::property(m_busName, m_path, m_interface, name, kCallTimeoutMs);
    switch (direct.outcome) {
    case DirectPropertyRead::Outcome::Value:
        return direct.value;
    case DirectPropertyRead::Outcome::Failed:
        return {};
    case DirectPropertyRead::Outcome::TimedOut:
        peers.noteReply(getCall(name), QDBusMessage::createError(QDBusError::NoReply,
                                                                 QStringLiteral("no answer")));
        return {};
    case DirectPropertyRead::Outcome::Unavailable:
        break;
    }
    const QDBusMessage reply = callBlocking(getCall(name));
    // Get answers exactly one variant; anything else is not an answer.
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("v"))
        return {};
    // A property of type "v" arrives as a variant inside the reply's variant.
    QVariant value = reply.arguments().first();
    for (int depth = 0; depth < 4 && value.metaType() == QMetaType::fromType<QDBusVariant>();
         ++depth)
        value = value.value<QDBusVariant>().variant();
    return value;
}

QDBusMessage ScriptingObject::getCall(const char* name) const
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        m_busName, m_path, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    call << m_interface << QString::fromLatin1(name);
    return call;
}

bool ScriptingObject::setProperty(const char* name, const QVariant& value) const
{
    if (isNull())
        return false;
    QDBusMessage call = QDBusMessage::createMethodCall(
        m_busName, m_path, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Set"));
    call << m_interface << QString::fromLatin1(name) << QVariant::fromValue(QDBusVariant(value));
    return callBlocking(call).type() == QDBusMessage::ReplyMessage;
}

void ScriptingObject::callNoReply(const char* method) const
{
    if (isNull())
        return;
    QDBusConnection::sessionBus().send(QDBusMessage::createMethodCall(
        m_busName, m_path, m_interface, QString::fromLatin1(method)));
}

ScriptingObject ScriptingObject::objectProperty(const char* name, const QString& interface) const
{
    const QVariant value = property(name);
    if (value.metaType() != QMetaType::fromType<QDBusObjectPath>())
        return {};
    const QString path = value.value<QDBusObjectPath>().path();
    if (path.isEmpty())
        return {};
    return ScriptingObject(m_busName, path, interface);
}

QString ScriptingObject::toString(const QVariant& value)
{
    return value.metaType() == QMetaType::fromType<QString>() ? value.toString() : QString();
}

bool ScriptingObject::toBool(const QVariant& value)
{
    return value.metaType() == QMetaType::fromType<bool>() && value.toBool();
}

std::optional<double> ScriptingObject::toNumber(const QVariant& value)
{
    double number = 0;
    switch (value.metaType().id()) {
    case QMetaType::Double:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::UChar:
        number = value.toDouble();
        break;
    default:
        return std::nullopt;
    }
    if (!std::isfinite(number) || std::fabs(number) > kMaxMagnitude)
        return std::nullopt;
    return number;
}

std::int64_t ScriptingObject::toInt64(const QVariant& value)
{
    switch (value.metaType().id()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Short:
        return value.toLongLong();
    case QMetaType::UInt:
    case QMetaType::UShort:
    case QMetaType::UChar:
        return std::int64_t(value.toULongLong());
    case QMetaType::ULongLong: {
        const qulonglong n = value.toULongLong();
        return n <= qulonglong(std::numeric_limits<std::int64_t>::max()) ? std::int64_t(n) : 0;
    }
    default:
        return 0;
    }
}
