#include "peers/streaming_server_sim/stop_signal.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

// A handler may do next to nothing but write: the event loop reads.
int stopPipe[2];

void handle(int)
{
    const char byte = 0;
    // Full means that the request is on its way already.
    [[maybe_unused]] const ssize_t written = write(stopPipe[1], &byte, 1);
}

} // namespace

void quitOnStopRequest()
{
    if (pipe2(stopPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto *notifier =
        new QSocketNotifier(stopPipe[0], QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier] {
        notifier->setEnabled(false);
        QCoreApplication::quit();
    });
    struct sigaction action = {};
    action.sa_handler = handle;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaction(signal, &action, nullptr);
}
