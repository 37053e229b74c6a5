#pragma once

#include <QString>
#include <QVariant>

// A blocking property read made on the calling thread over a private sd-bus connection to the
// same session bus. Qt's blocking call hands the message to its bus thread and back, which costs
// a player's position read about 60 µs of CPU; this path costs about a third of that, and the
// update tick makes one such read five times a second.
//
// The call goes to the unique name that owns the player's name, looked up once and remembered
// until the name changes owner: that way a call never reaches a name this process serves itself
// (whose objects answer on the thread that would be blocked waiting for them).
namespace DirectPropertyRead {

enum class Outcome {
    Value,       // the reply's value, unwrapped from its variants
    Failed,      // an error reply, or a value of no basic type: reads as absent
    TimedOut,    // no answer within the limit
    Unavailable, // this path cannot answer (no private connection, a name served by this
                 // process, a container value): read through Qt's connection instead
};

struct Result {
    Outcome outcome = Outcome::Unavailable;
    QVariant value;
};

// The value of a basic D-Bus type as Qt's D-Bus module would give it (quint8, short, int,
// qlonglong, double, QString, QDBusObjectPath, ...).
Result property(const QString& busName, const QString& path, const QString& interface,
                const char* name, int timeoutMs);

// Forgets the remembered owner of busName (the name changed owner).
void forgetOwner(const QString& busName);

} // namespace DirectPropertyRead
