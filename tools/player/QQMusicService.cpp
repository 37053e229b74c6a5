#include "QQMusicService.h"

#include <QTcpSocket>

QQMusicService::QQMusicService(Playback& playback, quint16 port, bool namesVersewick)
    : m_playback(playback)
    , m_port(port)
    , m_namesVersewick(namesVersewick)
{
    connect(&m_server, &QTcpServer::newConnection, this, &QQMusicService::serve);
}

bool QQMusicService::start()
{
    return m_server.isListening() || m_server.listen(QHostAddress::LocalHost, m_port);
}

void QQMusicService::stop()
{
    m_server.close();
}

void QQMusicService::serve()
{
    while (QTcpSocket* socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
            const QByteArray request = socket->readAll();
            if (silent || !request.contains("\r\n\r\n"))
                return;
            const QByteArray path = request.split(' ').value(1);
            QByteArray body;
            if (path == "/all") {
                const Song* song = m_playback.current();
                body = fixedAll.isNull()
                           ? (song ? QStringLiteral("%1_$x$_%2_$x$_%3_$x$_%4")
                                         .arg(song->artist, song->title, song->album,
                                              QString::number(m_playback.position(), 'f', 3))
                                   : QStringLiteral("_$x$__$x$__$x$_0"))
                                 .toUtf8()
                           : fixedAll.toUtf8();
            } else {
                body = m_namesVersewick ? "QQMusic helper service for Versewick"
                                        : "QQMusic helper service";
            }
            socket->write("HTTP/1.1 200 OK\r\nContent-Type: text/plain; charset=utf-8\r\n"
                          "Content-Length: " +
                          QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body);
            socket->disconnectFromHost();
        });
    }
}
