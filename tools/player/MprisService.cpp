#include "MprisService.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <limits>

namespace {
const QString kRoot = QStringLiteral("org.mpris.MediaPlayer2");
const QString kPlayer = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");

const QStringList kRootNames{
    "Identity", "CanQuit", "CanRaise", "HasTrackList", "SupportedUriSchemes", "SupportedMimeTypes"};
const QStringList kPlayerNames{"PlaybackStatus", "Rate",        "Metadata",  "Position",
                               "MinimumRate",    "MaximumRate", "CanGoNext", "CanGoPrevious",
                               "CanPlay",        "CanPause",    "CanSeek",   "CanControl"};

QString huge()
{
    return QString(200000, u'x');
}
} // namespace

bool MprisFaults::set(const QString& name, bool on)
{
    bool* flag = name == QLatin1String("silent")        ? &silent
                 : name == QLatin1String("millis")      ? &millis
                 : name == QLatin1String("stuck")       ? &stuck
                 : name == QLatin1String("no-rate")     ? &noRate
                 : name == QLatin1String("wrong-types") ? &wrongTypes
                 : name == QLatin1String("huge")        ? &huge
                                                        : nullptr;
    if (flag)
        *flag = on;
    return flag != nullptr;
}

MprisService::MprisService(Playback& playback, const MprisFaults& faults, QString identity,
                           QDBusConnection bus, std::function<void(QString)> command)
    : m_playback(playback)
    , m_faults(faults)
    , m_identity(std::move(identity))
    , m_bus(std::move(bus))
    , m_command(std::move(command))
{
}

QString MprisService::trackId() const
{
    const Song* song = m_playback.current();
    if (song && !song->trackId.isEmpty())
        return song->trackId;
    return QStringLiteral("/org/versewick/track/%1").arg(m_playback.index() + 1);
}

qint64 MprisService::positionValue() const
{
    if (m_faults.stuck)
        return 0;
    if (m_faults.huge)
        return std::numeric_limits<qint64>::max();
    const double seconds = m_playback.position();
    return m_faults.millis ? qint64(seconds * 1e3) : qint64(seconds * 1e6);
}

QVariantMap MprisService::metadata() const
{
    const Song* song = m_playback.current();
    if (!song)
        return {{"mpris:trackid", QVariant::fromValue(QDBusObjectPath(
                                      "/org/mpris/MediaPlayer2/TrackList/NoTrack"))}};
    QVariantMap map{{"mpris:trackid", QVariant::fromValue(QDBusObjectPath(trackId()))},
                    {"xesam:title", m_faults.huge ? huge() : song->title},
                    {"xesam:artist", QStringList{song->artist}},
                    {"xesam:album", song->album},
                    {"mpris:length", qlonglong(song->duration * 1e6)}};
    if (!song->url.isEmpty())
        map.insert("xesam:url", song->url);
    if (m_faults.wrongTypes) {
        map.insert("xesam:artist", 7);
        map.insert("xesam:album", QStringList{song->album});
        map.insert("mpris:length", QStringLiteral("long"));
    }
    return map;
}

QVariant MprisService::property(const QString& interface, const QString& name) const
{
    if (interface == kRoot) {
        if (name == QLatin1String("Identity"))
            return m_faults.wrongTypes ? QVariant(42)
                                       : QVariant(m_faults.huge ? huge() : m_identity);
        if (name == QLatin1String("SupportedUriSchemes"))
            return QStringList{"file"};
        if (name == QLatin1String("SupportedMimeTypes"))
            return QStringList{"audio/mpeg"};
        return kRootNames.contains(name) ? QVariant(false) : QVariant();
    }
    if (interface != kPlayer)
        return {};
    if (name == QLatin1String("PlaybackStatus"))
        return QString::fromLatin1(Playback::stateName(m_playback.state()));
    if (name == QLatin1String("Rate")) {
        if (m_faults.noRate)
            return {};
        if (m_faults.wrongTypes)
            return QStringLiteral("fast");
        return m_faults.huge ? std::numeric_limits<double>::quiet_NaN() : m_playback.rate();
    }
    if (name == QLatin1String("Metadata"))
        return metadata();
    if (name == QLatin1String("Position"))
        return m_faults.wrongTypes ? QVariant(QStringLiteral("12")) : QVariant(positionValue());
    if (name == QLatin1String("MinimumRate"))
        return 0.25;
    if (name == QLatin1String("MaximumRate"))
        return 4.0;
    return kPlayerNames.contains(name) ? QVariant(true) : QVariant();
}

QVariantMap MprisService::all(const QString& interface) const
{
    QVariantMap map;
    for (const QString& name : interface == kRoot ? kRootNames : kPlayerNames) {
        const QVariant value = property(interface, name);
        if (value.isValid())
            map.insert(name, value);
    }
    return map;
}

bool MprisService::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    if (m_faults.silent) {
        message.setDelayedReply(true); // and never answer
        return true;
    }
    const QList<QVariant> args = message.arguments();
    QDBusMessage reply;
    if (message.interface() == kProperties && message.member() == QLatin1String("Get") &&
        args.size() == 2) {
        const QVariant value = property(args[0].toString(), args[1].toString());
        if (!value.isValid())
            reply = message.createErrorReply(QDBusError::InvalidArgs, "No such property");
        else
            reply = message.createReply(QVariant::fromValue(QDBusVariant(value)));
    } else if (message.interface() == kProperties && message.member() == QLatin1String("GetAll") &&
               args.size() == 1) {
        reply = message.createReply(QVariant(all(args[0].toString())));
    } else if (message.interface() == kPlayer && call(message)) {
        reply = message.createReply();
    } else {
        reply = message.createErrorReply(QDBusError::UnknownMethod, "Not supported");
    }
    return connection.send(reply);
}

bool MprisService::call(const QDBusMessage& message)
{
    const QString member = message.member();
    const QList<QVariant> args = message.arguments();
    static const QMap<QString, QString> simple{{"Play", "play"},           {"Pause", "pause"},
                                               {"PlayPause", "playpause"}, {"Next", "next"},
                                               {"Previous", "previous"},   {"Stop", "stop"}};
    if (simple.contains(member)) {
        m_command(simple.value(member));
        return true;
    }
    if (member == QLatin1String("Seek") && args.size() == 1) {
        const double to = m_playback.position() + double(args[0].toLongLong()) / 1e6;
        m_command(QStringLiteral("seek %1").arg(to));
        return true;
    }
    if (member == QLatin1String("SetPosition") && args.size() == 2) {
        // Ignored unless it names the current track, as MPRIS asks.
        if (args[0].value<QDBusObjectPath>().path() == trackId())
            m_command(QStringLiteral("seek %1").arg(double(args[1].toLongLong()) / 1e6));
        return true;
    }
    return false;
}

void MprisService::propertiesChanged(const QStringList& names) const
{
    QVariantMap changed;
    for (const QString& name : names) {
        const QVariant value = property(kPlayer, name);
        if (value.isValid())
            changed.insert(name, value);
    }
    QDBusMessage signal =
        QDBusMessage::createSignal(QLatin1String(kPath), kProperties, "PropertiesChanged");
    signal << kPlayer << changed << QStringList();
    m_bus.send(signal);
}

void MprisService::seeked() const
{
    if (m_faults.stuck)
        return; // a player that cannot tell its position does not announce seeks either
    QDBusMessage signal = QDBusMessage::createSignal(QLatin1String(kPath), kPlayer, "Seeked");
    signal << positionValue();
    m_bus.send(signal);
}

QString MprisService::introspect(const QString&) const
{
    return QStringLiteral(
        "<interface name=\"org.mpris.MediaPlayer2\">"
        "<method name=\"Raise\"/><method name=\"Quit\"/>"
        "<property name=\"Identity\" type=\"s\" access=\"read\"/>"
        "</interface>"
        "<interface name=\"org.mpris.MediaPlayer2.Player\">"
        "<method name=\"Play\"/><method name=\"Pause\"/><method name=\"PlayPause\"/>"
        "<method name=\"Next\"/><method name=\"Previous\"/><method name=\"Stop\"/>"
        "<method name=\"Seek\"><arg name=\"Offset\" type=\"x\" direction=\"in\"/></method>"
        "<method name=\"SetPosition\"><arg name=\"TrackId\" type=\"o\" direction=\"in\"/>"
        "<arg name=\"Position\" type=\"x\" direction=\"in\"/></method>"
        "<signal name=\"Seeked\"><arg name=\"Position\" type=\"x\"/></signal>"
        "<property name=\"PlaybackStatus\" type=\"s\" access=\"read\"/>"
        "<property name=\"Rate\" type=\"d\" access=\"read\"/>"
        "<property name=\"Metadata\" type=\"a{sv}\" access=\"read\"/>"
        "<property name=\"Position\" type=\"x\" access=\"read\"/>"
        "</interface>");
}
