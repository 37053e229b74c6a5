#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

#include <atomic>
#include <functional>
#include <memory>

class QTcpSocket;

// A small HTTP/1.1 server on 127.0.0.1 that runs on a thread of its own (so blocking clients
// on the test's thread can reach it) and answers each path with a scripted behaviour.
class RawHttpServer {
public:
    struct Request {
        QByteArray method;
        QByteArray path;                      // with the query
        QMap<QByteArray, QByteArray> headers; // lower-case names
        QByteArray body;
    };
    // Writes the answer (raw bytes) on the socket; may also do nothing (never answer).
    using Handler = std::function<void(const Request&, QTcpSocket&)>;

    RawHttpServer();
    ~RawHttpServer();

    void route(const QByteArray& path, Handler handler); // path without the query
    quint16 port() const;
    QString host() const; // "127.0.0.1:<port>"
    QString url(const QString& pathAndQuery) const;
    QList<Request> requests() const;
    int openConnections() const; // accepted and not yet closed by either side

    // Ready-made answers.
    static Handler status(int code, const QByteArray& body = {},
                          const QByteArray& extraHeaders = {});
    static Handler chunked(const QList<QByteArray>& chunks);
    static Handler gzipped(const QByteArray& body); // gzip when the client accepts it
    static Handler redirect(const QByteArray& location);
    static Handler silent(); // accepts and never answers
    // A 200 body of this many bytes, with or without a Content-Length; sent (when given)
    // counts the body bytes handed to the socket.
    static Handler huge(qint64 bytes, bool announced = true,
                        std::shared_ptr<std::atomic<qint64>> sent = {});
    // A 200 answer whose body comes one byte every intervalMs.
    static Handler trickle(const QByteArray& body, int intervalMs);

private:
    struct Impl;
    std::unique_ptr<Impl> d;
};

// A port on 127.0.0.1 with nothing listening.
quint16 closedPort();
