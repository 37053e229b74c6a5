#include "MpvProcess.h"

#include "support/PlayerProcess.h"

#include <QFile>
#include <QJsonDocument>
#include <QStandardPaths>

QString MpvProcess::mprisPlugin()
{
    if (QStandardPaths::findExecutable(QStringLiteral("mpv")).isEmpty())
        return {};
    for (const char* path : {"/usr/lib/mpv-mpris/mpris.so", "/etc/mpv/scripts/mpris.so"}) {
        if (QFile::exists(QString::fromUtf8(path)))
            return QString::fromUtf8(path);
    }
    return {};
}

MpvProcess::MpvProcess(const QString& socketPath, const QStringList& files,
                       const QStringList& options)
{
    m_process.start(QStringLiteral("mpv"),
                    QStringList{"--no-config", "--ao=null", "--vo=null", "--really-quiet",
                                "--script=" + mprisPlugin(), "--input-ipc-server=" + socketPath} +
                        options + QStringList{"--"} + files);
    if (!m_process.waitForStarted())
        return;
    waitFor(
        [&] {
            m_socket.connectToServer(socketPath);
            return m_socket.waitForConnected(200);
        },
        15000);
}

MpvProcess::~MpvProcess()
{
    m_socket.abort();
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
}

QJsonObject MpvProcess::command(const QJsonArray& command, int ms)
{
    if (!isConnected())
        return {};
    const int request = m_nextRequest++;
    m_socket.write(QJsonDocument(QJsonObject{{"command", command}, {"request_id", request}})
                       .toJson(QJsonDocument::Compact) +
                   '\n');
    m_socket.flush();
    QElapsedTimer waited;
    waited.start();
    // Events ("property-change", "seek"...) come on the same socket: skipped.
    while (waited.elapsed() < ms) {
        qsizetype end;
        while ((end = m_buffer.indexOf('\n')) >= 0) {
            const QJsonObject reply = QJsonDocument::fromJson(m_buffer.left(end)).object();
            m_buffer.remove(0, end + 1);
            if (reply.value("request_id").toInt() == request)
                return reply;
        }
        if (m_socket.bytesAvailable() == 0 && !m_socket.waitForReadyRead(100) && !isConnected())
            return {};
        m_buffer += m_socket.readAll();
    }
    return {};
}

bool MpvProcess::setPaused(bool paused)
{
    return command({"set_property", "pause", paused}).value("error") == "success";
}

std::optional<MpvProcess::Reading> MpvProcess::position(const QElapsedTimer& clock)
{
    const qint64 sent = clock.nsecsElapsed();
    const QJsonObject reply = command({"get_property", "time-pos"});
    const qint64 answered = clock.nsecsElapsed();
    if (!reply.value("data").isDouble())
        return std::nullopt;
    return Reading{reply.value("data").toDouble(), sent + (answered - sent) / 2};
}

bool MpvProcess::waitForExit(int ms)
{
    return m_process.state() == QProcess::NotRunning || m_process.waitForFinished(ms);
}
