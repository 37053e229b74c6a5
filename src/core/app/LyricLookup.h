#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class Lyric;

// The lookups a song change makes before asking a plug-in: the iTunes track's tag text, the
// audio file's lyrics tag, the .lrc beside the file, the lyrics folder. They read files, so
// they run on a worker thread: a pipe, a slow disk or a huge file never holds the main
// thread, and the parse of a large lyric happens there too.
namespace lookup {

struct Request {
    quint64 generation = 0; // the song change this answers
    QString tagText;        // an iTunes track's lyrics tag, as read on the main thread
    QString audioPath;      // a local audio file, or null
    QString artist;
    QString title;
};

struct Result {
    quint64 generation = 0;
    std::unique_ptr<Lyric> lyric; // null: none found
    int origin = -1;              // AppState::Origin
};

// The lookup itself: pure, touches no shared state, safe on any thread.
Result find(const Request& request);

} // namespace lookup

// One worker thread that runs lookups in turn. Only the latest request waits: a newer one
// replaces it, so a flood of song changes queues nothing. Answers come back on the
// receiver's thread; a lookup stuck forever (a pipe that nobody writes) stops only its worker,
// which is never joined, so quitting never waits for it.
class LyricLookupWorker {
public:
    using Answer = std::function<void(lookup::Result)>;

    // answer is called on receiver's thread, never after this is destroyed.
    LyricLookupWorker(QObject* receiver, Answer answer);
    ~LyricLookupWorker();
    LyricLookupWorker(const LyricLookupWorker&) = delete;
    LyricLookupWorker& operator=(const LyricLookupWorker&) = delete;

    // A lookup running longer than this is abandoned: the next request goes to a new thread.
    static constexpr int kStuckMs = 2000;

    void post(lookup::Request request);

    struct Shared; // what the worker thread and this share

private:
    void startThread();

    std::shared_ptr<Shared> m_shared;
    QObject* m_receiver;
    Answer m_answer;
};
