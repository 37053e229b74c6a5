#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

// SIGINT and SIGTERM end the event loop normally, so the settings are written out and the bus
// name is released (a signal handler only writes to a socket the loop watches).
class QuitOnSignal : public QObject {
    Q_OBJECT
public:
    QuitOnSignal();
    ~QuitOnSignal() override;

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};
