#include "demonstration/close_signals.h"

#include <QSocketNotifier>

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

// Written to by the signal handler, read on the GUI thread; open as long as the
// process.
int pipeEnds[2] = {-1, -1};

void note(int)
{
    const char byte = 0;
    // A full pipe already says what there is to say.
    [[maybe_unused]] const ssize_t written = write(pipeEnds[1], &byte, 1);
}

void handle(int signalNumber)
{
    struct sigaction action = {};
    action.sa_handler = note;
    action.sa_flags = SA_RESTART;
    sigaction(signalNumber, &action, nullptr);
}

} // namespace

void CloseSignals::heed()
{
    if (pipeEnds[0] >= 0 || pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    handle(SIGINT);
    handle(SIGTERM);
}

CloseSignals::CloseSignals(QObject *parent) : QObject(parent)
{
    heed();
    if (pipeEnds[0] < 0)
        return;
    auto *notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char bytes[16];
        while (read(pipeEnds[0], bytes, sizeof bytes) > 0) {
        }
        emit closeRequested();
    });
}
