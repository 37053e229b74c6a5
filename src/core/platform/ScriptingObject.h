#pragma once

#include <QDBusMessage>
#include <QString>
#include <QVariant>

#include <cstdint>
#include <optional>

// A player's scripting object: a D-Bus object of the player's bus name, read through
// synchronous property reads. Every failure (player gone, no such object, a player that does
// not answer within the limit, an answer of another type) reads as absent, 0, empty or false.
// An object with an empty bus name is absent: every read fails at once. Once a player has let
// a call time out, reads fail at once until it answers again (see UnresponsivePeers).
class ScriptingObject {
public:
    static constexpr int kCallTimeoutMs = 2000;
    // Numbers beyond this magnitude (31 years of seconds) are nonsense from a player: 0.
    static constexpr double kMaxMagnitude = 1e9;

    ScriptingObject() = default;
    ScriptingObject(QString busName, QString path, QString interface);

    bool isNull() const { return m_busName.isEmpty(); }
    const QString& busName() const { return m_busName; }
    const QString& path() const { return m_path; }

    // The property's value with its variants unwrapped; invalid when unreadable.
    QVariant property(const char* name) const;
    bool setProperty(const char* name, const QVariant& value) const;
    // Sends a method call without waiting for an answer.
    void callNoReply(const char* method) const;

    // Typed reads: a value of another D-Bus type reads as absent (null string, false, 0).
    QString stringProperty(const char* name) const { return toString(property(name)); }
    bool boolProperty(const char* name) const { return toBool(property(name)); }
    double doubleProperty(const char* name) const { return toNumber(property(name)).value_or(0); }
    std::optional<double> numberProperty(const char* name) const
    {
        return toNumber(property(name));
    }
    std::int64_t int64Property(const char* name) const { return toInt64(property(name)); }
    // An object path property as the object it names; absent when unreadable.
    ScriptingObject objectProperty(const char* name, const QString& interface) const;

    static QString toString(const QVariant& value);
    static bool toBool(const QVariant& value);
    // Any D-Bus integer or double that is finite and within kMaxMagnitude.
    static std::optional<double> toNumber(const QVariant& value);
    // Any D-Bus integer that fits; 0 otherwise.
    static std::int64_t toInt64(const QVariant& value);

private:
    QDBusMessage getCall(const char* name) const;

    QString m_busName;
    QString m_path;
    QString m_interface;
};
