#pragma once

#include <QString>
#include <QVariant>

// A player's scripting object: a D-Bus object of the player's bus name, read through
// synchronous property reads. Every failure (player gone, no such object, a player that does
// not answer within the limit) reads as an invalid QVariant, so callers see absent, 0, empty
// or false. An object with an empty bus name is absent: every read fails at once.
class ScriptingObject {
public:
    static constexpr int kCallTimeoutMs = 2000;

    ScriptingObject() = default;
    ScriptingObject(QString busName, QString path, QString interface);

    bool isNull() const { return m_busName.isEmpty(); }
    const QString& busName() const { return m_busName; }
    const QString& path() const { return m_path; }

    QVariant property(const char* name) const;
    bool setProperty(const char* name, const QVariant& value) const;
    // Sends a method call without waiting for an answer.
    void callNoReply(const char* method) const;

    QString stringProperty(const char* name) const { return property(name).toString(); }
    bool boolProperty(const char* name) const { return property(name).toBool(); }
    double doubleProperty(const char* name) const { return property(name).toDouble(); }
    // An object path property as the object it names; absent when unreadable.
    ScriptingObject objectProperty(const char* name, const QString& interface) const;

private:
    QString m_busName;
    QString m_path;
    QString m_interface;
};
