#include "platform/ScriptingObject.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

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
    QDBusMessage call = QDBusMessage::createMethodCall(
        m_busName, m_path, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    call << m_interface << QString::fromLatin1(name);
    const QDBusMessage reply =
        QDBusConnection::sessionBus().call(call, QDBus::Block, kCallTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    // A property of type "v" arrives as a variant inside the reply's variant.
    QVariant value = reply.arguments().first();
    for (int depth = 0; depth < 4 && value.metaType() == QMetaType::fromType<QDBusVariant>();
         ++depth)
        value = value.value<QDBusVariant>().variant();
    return value;
}

bool ScriptingObject::setProperty(const char* name, const QVariant& value) const
{
    if (isNull())
        return false;
    QDBusMessage call = QDBusMessage::createMethodCall(
        m_busName, m_path, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Set"));
    call << m_interface << QString::fromLatin1(name) << QVariant::fromValue(QDBusVariant(value));
    const QDBusMessage reply =
        QDBusConnection::sessionBus().call(call, QDBus::Block, kCallTimeoutMs);
    return reply.type() == QDBusMessage::ReplyMessage;
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
    if (!value.canConvert<QDBusObjectPath>())
        return {};
    const QString path = value.value<QDBusObjectPath>().path();
    if (path.isEmpty())
        return {};
    return ScriptingObject(m_busName, path, interface);
}
