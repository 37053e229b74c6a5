#pragma once

#include <QDBusMessage>
#include <QObject>

#include <functional>

// Seek requests sent to a player without waiting: the answer comes later on the GUI thread.
namespace playerseek {

using Done = std::function<void(bool moved)>;

// How long a player may take to answer a seek before it counts as refused.
inline constexpr int kTimeoutMs = 2000;

// Sends the call on the session bus; done(true) when the player answered without an error,
// done(false) on an error, no answer within kTimeoutMs, or no bus. done is called exactly once,
// never before this returns, and not at all once context is gone.
void send(const QDBusMessage& call, QObject* context, Done done);

// A property Set (org.freedesktop.DBus.Properties) of a double on an object of the player.
QDBusMessage setDouble(const QString& busName, const QString& path, const QString& interface,
                       const QString& property, double value);

// Answers done(false) from the event loop (a player that cannot seek).
void refuse(QObject* context, Done done);

} // namespace playerseek
