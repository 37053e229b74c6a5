#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

// SIGINT and SIGTERM end the event loop normally, so the settings are written out and the bus
// name is released (a signal handler only writes to a socket the loop watches). Whatever holds
// the process up (a player, a file, a thread stuck in a read), it ends within kDeadlineMs of
// the signal or of the event loop's end: a timer armed then ends it the hard way.
class QuitOnSignal : public QObject {
    Q_OBJECT
public:
    static constexpr int kDeadlineMs = 1500;

    QuitOnSignal();
    ~QuitOnSignal() override;

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};
