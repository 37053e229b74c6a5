#include "QuitOnSignal.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {
int gPipe[2] = {-1, -1};

void onSignal(int)
{
    const char c = 1;
    [[maybe_unused]] const auto n = ::write(gPipe[1], &c, 1);
}
} // namespace

QuitOnSignal::QuitOnSignal()
{
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
