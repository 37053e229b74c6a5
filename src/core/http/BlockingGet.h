#pragma once

#include <QByteArray>
#include <QUrl>

#include <optional>

namespace http {

// The default limit of a blocking request, as a plain request without one of its own has. Its
// caller waits, so it is short: a server that has not answered in full by then is given up on.
inline constexpr int kBlockingDefaultTimeoutMs = 5000;
// The default bound of a blocking answer: room for any lyric or search answer.
inline constexpr qint64 kBlockingDefaultMaxBytes = 4 * 1024 * 1024;

enum class BlockingFailure {
    None,
    InvalidUrl,
    Transport, // refused, broken, a redirect that cannot be followed
    TimedOut,  // the whole request took longer than its limit
    TooLarge,  // the answer announced or sent more than its bound
    Status,    // the final answer's HTTP status is not 2xx (a 300 or 304 included)
};

struct BlockingAnswer {
    std::optional<QByteArray> body; // a 2xx answer's body; nullopt on any failure
    BlockingFailure failure = BlockingFailure::None;
    int status = 0; // the final answer's HTTP status, when one came
};

// GET that blocks the calling thread until the answer, without running an event loop on it:
// no timer or other callback of the caller's thread fires meanwhile. The transfer runs on a
// worker thread of its own. timeoutMs bounds the whole request, however slowly the answer
// trickles in; maxBytes bounds the body. Past either the transfer is aborted at once, so
// nothing runs on after the caller has been given up on. No User-Agent of our own is sent.
BlockingAnswer blockingFetch(const QUrl& url, int timeoutMs = kBlockingDefaultTimeoutMs,
                             qint64 maxBytes = kBlockingDefaultMaxBytes);

// The body alone: nullopt on any failure.
std::optional<QByteArray> blockingGet(const QUrl& url, int timeoutMs = kBlockingDefaultTimeoutMs,
                                      qint64 maxBytes = kBlockingDefaultMaxBytes);

} // namespace http
