#pragma once

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonObject>
#include <QLocalSocket>
#include <QProcess>

#include <optional>

// mpv with Debian's MPRIS plug-in, as a child process on the test's session bus, driven
// through its IPC socket (--input-ipc-server). No audio or video output.
class MpvProcess {
public:
    // The plug-in's path; null when mpv or the plug-in is not installed.
    static QString mprisPlugin();

    MpvProcess(const QString& socketPath, const QStringList& files,
               const QStringList& options = {});
    ~MpvProcess();
    // Whether the IPC socket answers.
    bool isConnected() const { return m_socket.state() == QLocalSocket::ConnectedState; }
    // Sends a command and answers mpv's reply (with "error" and "data"); empty when none came.
    QJsonObject command(const QJsonArray& command, int ms = 5000);
    bool setPaused(bool paused);

    // mpv's own playback position and the moment (on the clock given) it was read: the middle
    // of the request's round trip.
    struct Reading {
        double position;
        qint64 atNs;
    };
    std::optional<Reading> position(const QElapsedTimer& clock);
    bool waitForExit(int ms);
    qint64 pid() const { return m_process.processId(); }

private:
    QProcess m_process;
    QLocalSocket m_socket;
    QByteArray m_buffer;
    int m_nextRequest = 1;
};
