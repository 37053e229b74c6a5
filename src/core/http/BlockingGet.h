#pragma once

#include <QByteArray>
#include <QUrl>

#include <optional>

namespace http {

// The default limit of a blocking request, as a plain request without one of its own has.
inline constexpr int kBlockingDefaultTimeoutMs = 60000;

// GET that blocks the calling thread until the answer, without running an event loop on it:
// no timer or other callback of the caller's thread fires meanwhile. The transfer runs on a
// worker thread of its own. The body whatever the HTTP status; nullopt on a transport
// failure, including the time limit. No User-Agent of our own is sent.
std::optional<QByteArray> blockingGet(const QUrl& url, int timeoutMs = kBlockingDefaultTimeoutMs);

} // namespace http
