#pragma once

#include <QString>

#include <functional>

// Programming errors (a log call on an unknown environment, for example) are reported here
// rather than aborting: the application runs all day and must not die of a diagnostic.
// The default handler writes the text to the Qt message log; tests install their own.
namespace foundation {

using AssertionHandler = std::function<void(const QString& text)>;

void assertionFailure(const QString& text);

// Returns the handler that was installed before. An empty handler restores the default.
AssertionHandler setAssertionHandler(AssertionHandler handler);

} // namespace foundation
