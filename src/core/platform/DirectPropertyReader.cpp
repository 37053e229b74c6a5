#include "platform/DirectPropertyReader.h"

#include <QCoreApplication>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QThread>

#include <dbus/dbus.h>

#include <cstring>
#include <memory>

namespace {

struct MessageUnref {
    void operator()(DBusMessage* message) const { dbus_message_unref(message); }
};
using Message = std::unique_ptr<DBusMessage, MessageUnref>;

// A basic value as Qt's D-Bus module types it; nothing for containers and file descriptors.
std::optional<QVariant> basicValue(DBusMessageIter* iter)
{
    DBusBasicValue value{};
    const int type = dbus_message_iter_get_arg_type(iter);
    if (type == DBUS_TYPE_INVALID || type == DBUS_TYPE_UNIX_FD || !dbus_type_is_basic(type))
        return std::nullopt;
    dbus_message_iter_get_basic(iter, &value);
    switch (type) {
    case DBUS_TYPE_BYTE:
        return QVariant::fromValue(uchar(value.byt));
    case DBUS_TYPE_BOOLEAN:
        return QVariant(value.bool_val != 0);
    case DBUS_TYPE_INT16:
        return QVariant::fromValue(short(value.i16));
    case DBUS_TYPE_UINT16:
        return QVariant::fromValue(ushort(value.u16));
    case DBUS_TYPE_INT32:
        return QVariant(int(value.i32));
    case DBUS_TYPE_UINT32:
        return QVariant(uint(value.u32));
    case DBUS_TYPE_INT64:
        return QVariant(qlonglong(value.i64));
    case DBUS_TYPE_UINT64:
        return QVariant(qulonglong(value.u64));
    case DBUS_TYPE_DOUBLE:
        return QVariant(value.dbl);
    case DBUS_TYPE_STRING:
        return QVariant(QString::fromUtf8(value.str));
    case DBUS_TYPE_OBJECT_PATH:
        return QVariant::fromValue(QDBusObjectPath(QString::fromUtf8(value.str)));
    case DBUS_TYPE_SIGNATURE:
        return QVariant::fromValue(QDBusSignature(QString::fromUtf8(value.str)));
    default:
        return std::nullopt;
    }
}

} // namespace

DirectPropertyReader::DirectPropertyReader(DBusConnection* connection)
    : m_connection(connection)
{
}

DirectPropertyReader::~DirectPropertyReader()
{
    dbus_connection_close(m_connection);
    dbus_connection_unref(m_connection);
}

DirectPropertyReader* DirectPropertyReader::forThisThread()
{
    // The application's main thread only: its reader lives as long as the program.
    const QCoreApplication* app = QCoreApplication::instance();
    if (!app || QThread::currentThread() != app->thread())
        return nullptr;
    static const std::unique_ptr<DirectPropertyReader> reader = [] {
        DBusError error;
        dbus_error_init(&error);
        DBusConnection* connection = dbus_bus_get_private(DBUS_BUS_SESSION, &error);
        dbus_error_free(&error);
        if (!connection)
            return std::unique_ptr<DirectPropertyReader>();
        // A bus that goes away must not end the program (libdbus's default for bus connections).
        dbus_connection_set_exit_on_disconnect(connection, FALSE);
        return std::unique_ptr<DirectPropertyReader>(new DirectPropertyReader(connection));
    }();
    return reader.get();
}

DirectPropertyReader::Result DirectPropertyReader::get(const QString& busName, const QString& path,
                                                       const QString& interface,
                                                       const QString& name, int timeoutMs)
{
    if (!dbus_connection_get_is_connected(m_connection))
        return {};
    const QByteArray bus = busName.toUtf8(), object = path.toUtf8();
    const QByteArray iface = interface.toUtf8(), property = name.toUtf8();
    // libdbus aborts the process on invalid names: check them first.
    if (!dbus_validate_bus_name(bus.constData(), nullptr) ||
        !dbus_validate_path(object.constData(), nullptr) ||
        !dbus_validate_interface(iface.constData(), nullptr))
        return {};
    Message call(dbus_message_new_method_call(bus.constData(), object.constData(),
                                              DBUS_INTERFACE_PROPERTIES, "Get"));
    const char* ifaceText = iface.constData();
    const char* propertyText = property.constData();
    if (!call || !dbus_message_append_args(call.get(), DBUS_TYPE_STRING, &ifaceText,
                                           DBUS_TYPE_STRING, &propertyText, DBUS_TYPE_INVALID))
        return {};
    DBusError error;
    dbus_error_init(&error);
    Message reply(
        dbus_connection_send_with_reply_and_block(m_connection, call.get(), timeoutMs, &error));
    // Nothing else is read from this connection: drop what arrived besides the answer.
    while (DBusMessage* other = dbus_connection_pop_message(m_connection))
        dbus_message_unref(other);
    if (!reply) {
        const bool timedOut =
            dbus_error_is_set(&error) && (std::strcmp(error.name, DBUS_ERROR_NO_REPLY) == 0 ||
                                          std::strcmp(error.name, DBUS_ERROR_TIMEOUT) == 0);
        dbus_error_free(&error);
        return {timedOut ? Outcome::TimedOut : Outcome::Absent, {}};
    }
    // Get answers exactly one variant; a property of type "v" nests further variants.
    if (std::strcmp(dbus_message_get_signature(reply.get()), "v") != 0)
        return {Outcome::Absent, {}};
    DBusMessageIter iter;
    dbus_message_iter_init(reply.get(), &iter);
    for (int depth = 0; depth < 4 && dbus_message_iter_get_arg_type(&iter) == DBUS_TYPE_VARIANT;
         ++depth) {
        DBusMessageIter inner;
        dbus_message_iter_recurse(&iter, &inner);
        iter = inner;
    }
    if (dbus_message_iter_get_arg_type(&iter) == DBUS_TYPE_VARIANT)
        return {}; // deeper than Qt's path unwraps: let it answer
    if (std::optional<QVariant> value = basicValue(&iter))
        return {Outcome::Value, std::move(*value)};
    return {};
}
