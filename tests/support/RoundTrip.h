#pragma once

#include "core/platform/DistributedNotificationCenter.h"
#include "support/PlayerProcess.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>

// Proofs that something did not happen, without waiting a fixed time: each makes a round trip
// whose answer must come after the event in question, so that once it has come, an event that
// has not been seen will not be.

// Every notice this process posted before has reached its observers: the bus keeps one
// sender's messages in order, so a marker posted now comes back after them.
inline bool postedNoticesDelivered()
{
    static int serial = 0;
    auto& center = DistributedNotificationCenter::defaultCenter();
    const QString marker = QStringLiteral("org.versewick.test.marker%1").arg(++serial);
    bool seen = false;
    const auto observation = center.observe(
        marker, {}, [&](const QString&, const QString&, const QVariantMap&) { seen = true; });
    return center.post(marker, QStringLiteral("org.versewick.test")) &&
           waitFor([&] { return seen; });
}

namespace roundtrip {
// Waits for the answer to a call made now.
inline bool answered(const QDBusMessage& call)
{
    QDBusPendingCallWatcher watcher(QDBusConnection::sessionBus().asyncCall(call));
    bool done = false;
    QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, [&] { done = true; });
    return waitFor([&] { return done; });
}
} // namespace roundtrip

// Every signal the bus sent this process before (name owner changes) has been handled: its
// answer to a call made now is queued behind them.
inline bool busSignalsDelivered()
{
    return roundtrip::answered(QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
}

// Every signal this MPRIS player sent before, and every call this process made to it before,
// has been handled here: it answers in order, and its answers and signals leave in order.
inline bool mprisPlayerAnswered(const QString& busName)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        busName, QStringLiteral("/org/mpris/MediaPlayer2"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << QStringLiteral("org.mpris.MediaPlayer2.Player") << QStringLiteral("PlaybackStatus");
    return roundtrip::answered(call);
}

// Every signal this peer sent before has been handled here: its answer to a call made now
// leaves after them.
inline bool peerAnswered(const QString& busName)
{
    return roundtrip::answered(QDBusMessage::createMethodCall(
        busName, QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus.Peer"),
        QStringLiteral("Ping")));
}

// Everything this process heard of these MPRIS players (org.mpris.MediaPlayer2.<name>) so far
// has been handled: their arrival on the bus, their signals, and the answers to its reads and
// to the reads those caused.
inline bool mprisPlayersSettled(const QStringList& names)
{
    if (!busSignalsDelivered())
        return false;
    for (int round = 0; round < 2; ++round) {
        for (const QString& name : names) {
            if (!mprisPlayerAnswered(QStringLiteral("org.mpris.MediaPlayer2.") + name))
                return false;
        }
    }
    return true;
}
