#include "support/PlayerProcess.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonDocument>

bool waitFor(const std::function<bool()>& done, int ms)
{
    // done() is asked once per round: it may consume what it found.
    QElapsedTimer timer;
    timer.start();
    for (;;) {
        if (done())
            return true;
        if (timer.elapsed() >= ms)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
}

PlayerProcess::PlayerProcess(const QStringList& args)
{
    QObject::connect(&m_process, &QProcess::readyReadStandardOutput, [this] { read(); });
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.start(QStringLiteral(VERSEWICK_PLAYER), args);
    m_process.waitForStarted();
    waitEvent(QStringLiteral("ready"));
}

PlayerProcess::~PlayerProcess()
{
    if (m_process.state() != QProcess::NotRunning) {
        send(QStringLiteral("exit"));
        if (!m_process.waitForFinished(3000))
            m_process.kill();
        m_process.waitForFinished(1000);
    }
}

void PlayerProcess::send(const QString& command)
{
    m_process.write(command.toUtf8() + '\n');
    m_process.waitForBytesWritten(1000);
}

void PlayerProcess::read()
{
    m_buffer += m_process.readAllStandardOutput();
    qsizetype end;
    while ((end = m_buffer.indexOf('\n')) >= 0) {
        m_events.append(QJsonDocument::fromJson(m_buffer.left(end)).object());
        m_buffer.remove(0, end + 1);
    }
}

bool PlayerProcess::waitEvent(const QString& name, const QString& player, int ms)
{
    return waitFor(
        [&] {
            for (qsizetype i = m_seen; i < m_events.size(); ++i) {
                const QJsonObject& e = m_events[i];
                if (e["event"].toString() == name &&
                    (player.isEmpty() || e["player"].toString() == player)) {
                    m_seen = i + 1;
                    return true;
                }
            }
            return false;
        },
        ms);
}
