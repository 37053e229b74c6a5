#pragma once

#include <QList>
#include <QObject>

#include <functional>

// The target of the sources' target-and-selector callbacks: counts song changes and records
// what `running` answers at every app-state callback.
class CallbackTarget : public QObject {
    Q_OBJECT
public:
    std::function<bool()> running;
    QList<bool> appStates;
    int songChanges = 0;

public Q_SLOTS:
    void songChanged() { ++songChanges; }
    void appStateChanged() { appStates << (running ? running() : false); }
};
