#pragma once

#include "Playback.h"

#include <QTcpServer>

// QQMusic's loopback HTTP service: "/" names the helper (with or without "Versewick"),
// "/all" answers "artist_$x$_title_$x$_album_$x$_position".
class QQMusicService : public QObject {
    Q_OBJECT
public:
    QQMusicService(Playback& playback, quint16 port, bool namesVersewick);
    bool start();
    void stop();
    quint16 port() const { return m_port; }
    // Scripted answers for testing clients: silent (accepts, never answers) and a fixed body.
    bool silent = false;
    QString fixedAll;

private:
    void serve();
    Playback& m_playback;
    QTcpServer m_server;
    quint16 m_port;
    bool m_namesVersewick;
};
