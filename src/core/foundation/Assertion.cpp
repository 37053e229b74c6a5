#include "core/foundation/Assertion.h"

#include <QDebug>

#include <mutex>

namespace foundation {
namespace {
std::mutex gMutex;
AssertionHandler gHandler;
} // namespace

void assertionFailure(const QString& text)
{
    AssertionHandler handler;
    {
        std::lock_guard lock(gMutex);
        handler = gHandler;
    }
    if (handler) {
        handler(text);
        return;
    }
    qCritical().noquote() << "assertion failed:" << text;
}

AssertionHandler setAssertionHandler(AssertionHandler handler)
{
    std::lock_guard lock(gMutex);
    return std::exchange(gHandler, std::move(handler));
}

} // namespace foundation
