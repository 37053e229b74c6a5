#include "QuitOnSignal.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace {
int gPipe[2] = {-1, -1};

// Async-signal-safe: arms a one-shot real-time timer; its SIGALRM ends the process.
void armDeadline()
{
    itimerval deadline{};
    deadline.it_value.tv_sec = QuitOnSignal::kDeadlineMs / 1000;
    deadline.it_value.tv_usec = (QuitOnSignal::kDeadlineMs % 1000) * 1000;
    itimerval old{};
    ::getitimer(ITIMER_REAL, &old);
    if (old.it_value.tv_sec == 0 && old.it_value.tv_usec == 0) // the first one stands
        ::setitimer(ITIMER_REAL, &deadline, nullptr);
}

void onDeadline(int)
{
    ::_exit(0);
}

void onSignal(int)
{
    armDeadline();
    const char c = 1;
    [[maybe_unused]] const auto n = ::write(gPipe[1], &c, 1);
}
} // namespace

QuitOnSignal::QuitOnSignal()
{
    std::signal(SIGALRM, onDeadline);
    // Quit by any path (the menu, the service): the shutdown after the loop is bounded too.
    connect(qApp, &QCoreApplication::aboutToQuit, this, [] { armDeadline(); });
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, gPipe) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(gPipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, qApp, &QCoreApplication::quit);
    std::signal(SIGINT, onSignal);
    std::signal(SIGTERM, onSignal);
}

QuitOnSignal::~QuitOnSignal()
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
}
