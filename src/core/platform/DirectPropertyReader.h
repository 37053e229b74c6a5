#pragma once

#include <QString>
#include <QVariant>

#include <optional>

struct DBusConnection;

// Reads one D-Bus property with a blocking call made on the calling thread, over a private
// session-bus connection of its own. Qt's blocking calls hand the message to its bus thread and
// wait for the answer to come back from there; the update tick reads the player's position five
// times a second, and the two thread hand-offs cost more than the call itself. Only the
// thread that opened the connection uses it; other threads, and answers of types other than a
// basic one, take Qt's path.
class DirectPropertyReader {
public:
    enum class Outcome { Value, Absent, TimedOut, Unavailable };
    struct Result {
        Outcome outcome = Outcome::Unavailable;
        QVariant value; // with Outcome::Value: as Qt's D-Bus module would give it
    };

    // The reader of the calling thread's session bus, or null when it cannot be used here.
    static DirectPropertyReader* forThisThread();

    Result get(const QString& busName, const QString& path, const QString& interface,
               const QString& name, int timeoutMs);

    ~DirectPropertyReader();
    DirectPropertyReader(const DirectPropertyReader&) = delete;
    DirectPropertyReader& operator=(const DirectPropertyReader&) = delete;

private:
    explicit DirectPropertyReader(DBusConnection* connection);
    DBusConnection* m_connection = nullptr; // owned: closed and released with the reader
};
