#include "core/app/LyricLookup.h"

#include "core/app/AppState.h"
#include "core/audiofile/AudioFileLyrics.h"
#include "core/lyric/Lyric.h"
#include "core/store/LyricControl.h"
#include "core/store/LyricTagBlock.h"

#include <QElapsedTimer>
#include <QMetaObject>

#include <condition_variable>
#include <mutex>
#include <thread>

namespace lookup {

namespace {
std::unique_ptr<Lyric> parsed(const QString& text)
{
    auto lyric = std::make_unique<Lyric>();
    lyric->parseLRCcontent(text);
    return lyric;
}
} // namespace

Result find(const Request& request)
{
    Result result;
    result.generation = request.generation;
    if (!request.tagText.isEmpty()) {
        if (const auto text = tagblock::lrcFromTagText(request.tagText)) {
            result.lyric = parsed(*text);
            result.origin = AppState::TrackTag;
            return result;
        }
    }
    if (!request.audioPath.isEmpty()) {
        int origin = AppState::TrackTag;
        std::optional<QString> text = AudioFileLyrics::readLyric(request.audioPath);
        if (!text) {
            origin = AppState::BesideAudio;
            text = AudioFileLyrics::readLrcBeside(request.audioPath);
        }
        // Text without timed lines: the folder and the plug-in may do better.
        if (text) {
            if (auto lyric = parsed(*text); lyric->lines() > 0) {
                result.lyric = std::move(lyric);
                result.origin = origin;
                return result;
            }
        }
    }
    if (request.artist.isEmpty() || request.title.isEmpty())
        return result;
    const LyricControl folder; // only its stateless reading is used
    result.lyric =
        folder.readLrcByIdentify(folder.identifyFromArtist(request.artist, request.title));
    if (result.lyric)
        result.origin = AppState::Folder;
    return result;
}

} // namespace lookup

struct LyricLookupWorker::Shared {
    std::mutex lock;
    std::condition_variable wake;
    std::optional<lookup::Request> pending;
    bool stop = false;
    bool started = false;
    QElapsedTimer running;       // valid while a lookup runs
    QObject* receiver = nullptr; // cleared, under the lock, before it goes
    Answer answer;
};

namespace {
void abandon(LyricLookupWorker::Shared& shared)
{
    std::lock_guard guard(shared.lock);
    shared.stop = true;
    shared.pending.reset();
    shared.receiver = nullptr;
    shared.wake.notify_all();
}
} // namespace

LyricLookupWorker::LyricLookupWorker(QObject* receiver, Answer answer)
    : m_receiver(receiver)
    , m_answer(std::move(answer))
{
}

LyricLookupWorker::~LyricLookupWorker()
{
    if (m_shared)
        abandon(*m_shared);
}

void LyricLookupWorker::post(lookup::Request request)
{
    bool stuck = false;
    if (m_shared) {
        std::lock_guard guard(m_shared->lock);
        stuck = m_shared->running.isValid() && m_shared->running.elapsed() > kStuckMs;
    }
    if (stuck) // a pipe or a dead disk holds it; it ends on its own if it ever can
        abandon(*m_shared);
    if (!m_shared || stuck) {
        m_shared = std::make_shared<Shared>();
        m_shared->receiver = m_receiver;
        m_shared->answer = m_answer;
    }
    std::lock_guard guard(m_shared->lock);
    m_shared->pending = std::move(request);
    if (!m_shared->started) {
        m_shared->started = true;
        startThread();
    }
    m_shared->wake.notify_all();
}

void LyricLookupWorker::startThread()
{
    std::thread([shared = m_shared] {
        std::unique_lock guard(shared->lock);
        for (;;) {
            shared->wake.wait(guard, [&] { return shared->stop || shared->pending; });
            if (shared->stop)
                return;
            const lookup::Request request = std::move(*shared->pending);
            shared->pending.reset();
            shared->running.start();
            guard.unlock();
            auto result = std::make_shared<lookup::Result>(lookup::find(request));
            guard.lock();
            shared->running.invalidate();
            // Posted under the lock: the receiver cannot go between the check and the post,
            // and an event posted to it is discarded if it goes later.
            if (shared->stop || !shared->receiver)
                return;
            QMetaObject::invokeMethod(
                shared->receiver,
                [shared, result] {
                    if (shared->answer && !shared->stop)
                        shared->answer(std::move(*result));
                },
                Qt::QueuedConnection);
        }
    }).detach();
}
