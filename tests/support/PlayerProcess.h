#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QStringList>

#include <functional>

// Processes events until done() or the time is up; answers done().
bool waitFor(const std::function<bool()>& done, int ms = 10000);

// The versewick-player simulator as a child process on the test's session bus.
class PlayerProcess {
public:
    explicit PlayerProcess(const QStringList& args);
    ~PlayerProcess();

    void send(const QString& command);
    // Waits for an event with this name (and player, when given) after the last one seen.
    bool waitEvent(const QString& name, const QString& player = {}, int ms = 10000);
    QList<QJsonObject> events() const { return m_events; }

private:
    void read();
    QProcess m_process;
    QByteArray m_buffer;
    QList<QJsonObject> m_events;
    qsizetype m_seen = 0;
};
