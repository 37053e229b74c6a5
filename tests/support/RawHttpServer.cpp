#include "support/RawHttpServer.h"

#include <QMutex>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QTimer>

#include <zlib.h>

struct RawHttpServer::Impl {
    QThread thread;
    QObject* context = nullptr;   // lives on thread; runs the server's code there
    QTcpServer* server = nullptr; // lives on thread
    quint16 port = 0;
    mutable QMutex mutex;
    QMap<QByteArray, Handler> routes;
    QList<Request> requests;
    std::atomic<int> open{0};

    void serve(QTcpSocket* socket)
    {
        ++open;
        QObject::connect(socket, &QObject::destroyed, [this] { --open; });
        auto buffer = std::make_shared<QByteArray>();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, buffer] {
            buffer->append(socket->readAll());
            const qsizetype headerEnd = buffer->indexOf("\r\n\r\n");
            if (headerEnd < 0)
                return;
            Request request;
            const QList<QByteArray> lines = buffer->left(headerEnd).split('\n');
            const QList<QByteArray> first = lines.value(0).trimmed().split(' ');
            request.method = first.value(0);
            request.path = first.value(1);
            for (qsizetype i = 1; i < lines.size(); ++i) {
                const qsizetype colon = lines[i].indexOf(':');
                if (colon > 0)
                    request.headers.insert(lines[i].left(colon).trimmed().toLower(),
                                           lines[i].mid(colon + 1).trimmed());
            }
            const qsizetype length = request.headers.value("content-length").toLongLong();
            if (buffer->size() < headerEnd + 4 + length)
                return;
            request.body = buffer->mid(headerEnd + 4, length);
            buffer->remove(0, headerEnd + 4 + length);
            Handler handler;
            {
                QMutexLocker lock(&mutex);
                requests.append(request);
                handler = routes.value(request.path.split('?').value(0),
                                       RawHttpServer::status(404, "no such page"));
            }
            handler(request, *socket);
        });
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
};

RawHttpServer::RawHttpServer()
    : d(std::make_unique<Impl>())
{
    d->context = new QObject;
    d->context->moveToThread(&d->thread);
    QObject::connect(&d->thread, &QThread::finished, d->context, &QObject::deleteLater);
    d->thread.start();
    QMetaObject::invokeMethod(
        d->context,
        [this] {
            d->server = new QTcpServer;
            d->server->listen(QHostAddress::LocalHost, 0);
            d->port = d->server->serverPort();
            QObject::connect(d->server, &QTcpServer::newConnection, d->server, [this] {
                while (QTcpSocket* socket = d->server->nextPendingConnection())
                    d->serve(socket);
            });
        },
        Qt::BlockingQueuedConnection);
}

RawHttpServer::~RawHttpServer()
{
    QMetaObject::invokeMethod(
        d->context, [this] { delete d->server; }, Qt::BlockingQueuedConnection);
    d->thread.quit();
    d->thread.wait();
}

void RawHttpServer::route(const QByteArray& path, Handler handler)
{
    QMutexLocker lock(&d->mutex);
    d->routes.insert(path, std::move(handler));
}

int RawHttpServer::openConnections() const
{
    return d->open;
}

quint16 RawHttpServer::port() const
{
    return d->port;
}

QString RawHttpServer::host() const
{
    return QStringLiteral("127.0.0.1:%1").arg(d->port);
}

QString RawHttpServer::url(const QString& pathAndQuery) const
{
    return QStringLiteral("http://") + host() + pathAndQuery;
}

QList<RawHttpServer::Request> RawHttpServer::requests() const
{
    QMutexLocker lock(&d->mutex);
    return d->requests;
}

namespace {
QByteArray reason(int code)
{
    switch (code) {
    case 200:
        return "OK";
    case 204:
        return "No Content";
    case 300:
        return "Multiple Choices";
    case 304:
        return "Not Modified";
    case 301:
        return "Moved Permanently";
    case 302:
        return "Found";
    case 404:
        return "Not Found";
    case 500:
        return "Internal Server Error";
    default:
        return "Status";
    }
}
} // namespace

RawHttpServer::Handler RawHttpServer::status(int code, const QByteArray& body,
                                             const QByteArray& extraHeaders)
{
    return [=](const Request&, QTcpSocket& socket) {
        socket.write("HTTP/1.1 " + QByteArray::number(code) + ' ' + reason(code) +
                     "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n" +
                     extraHeaders + "Connection: close\r\n\r\n" + body);
        socket.disconnectFromHost();
    };
}

RawHttpServer::Handler RawHttpServer::chunked(const QList<QByteArray>& chunks)
{
    return [=](const Request&, QTcpSocket& socket) {
        QByteArray out =
            "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\nConnection: close\r\n\r\n";
        for (const QByteArray& chunk : chunks)
            out += QByteArray::number(chunk.size(), 16) + "\r\n" + chunk + "\r\n";
        out += "0\r\n\r\n";
        socket.write(out);
        socket.disconnectFromHost();
    };
}

RawHttpServer::Handler RawHttpServer::gzipped(const QByteArray& body)
{
    return [=](const Request& request, QTcpSocket& socket) {
        if (!request.headers.value("accept-encoding").contains("gzip")) {
            status(200, body)(request, socket);
            return;
        }
        z_stream z{};
        deflateInit2(&z, Z_DEFAULT_COMPRESSION, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
        QByteArray out(int(deflateBound(&z, uLong(body.size()))) + 32, Qt::Uninitialized);
        z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(body.constData()));
        z.avail_in = uInt(body.size());
        z.next_out = reinterpret_cast<Bytef*>(out.data());
        z.avail_out = uInt(out.size());
        deflate(&z, Z_FINISH);
        out.truncate(qsizetype(z.total_out));
        deflateEnd(&z);
        status(200, out, "Content-Encoding: gzip\r\n")(request, socket);
    };
}

RawHttpServer::Handler RawHttpServer::redirect(const QByteArray& location)
{
    return status(302, {}, "Location: " + location + "\r\n");
}

RawHttpServer::Handler RawHttpServer::silent()
{
    return [](const Request&, QTcpSocket&) {};
}

RawHttpServer::Handler RawHttpServer::huge(qint64 bytes, bool announced,
                                           std::shared_ptr<std::atomic<qint64>> sent)
{
    return [=](const Request&, QTcpSocket& socket) {
        socket.write(
            "HTTP/1.1 200 OK\r\n" +
            (announced ? "Content-Length: " + QByteArray::number(bytes) + "\r\n" : QByteArray()) +
            "Connection: close\r\n\r\n");
        auto left = std::make_shared<qint64>(bytes);
        auto pump = [&socket, left, sent] {
            const QByteArray block(64 * 1024, 'x');
            while (*left > 0 && socket.state() == QAbstractSocket::ConnectedState &&
                   socket.bytesToWrite() < 1024 * 1024) {
                const qint64 n = std::min<qint64>(*left, block.size());
                socket.write(block.constData(), n);
                *left -= n;
                if (sent)
                    *sent += n;
            }
            if (*left == 0)
                socket.disconnectFromHost();
        };
        QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, pump);
        pump();
    };
}

RawHttpServer::Handler RawHttpServer::trickle(const QByteArray& body, int intervalMs)
{
    return [=](const Request&, QTcpSocket& socket) {
        socket.write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) +
                     "\r\nConnection: close\r\n\r\n");
        auto timer = new QTimer(&socket);
        auto next = std::make_shared<qsizetype>(0);
        QObject::connect(timer, &QTimer::timeout, &socket, [&socket, timer, next, body] {
            if (*next >= body.size()) {
                timer->stop();
                socket.disconnectFromHost();
                return;
            }
            socket.write(body.mid((*next)++, 1));
        });
        timer->start(intervalMs);
    };
}

quint16 closedPort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    const quint16 port = probe.serverPort();
    probe.close();
    return port;
}
