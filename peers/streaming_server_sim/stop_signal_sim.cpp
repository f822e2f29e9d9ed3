#include "peers/streaming_server_sim/stop_signal.h"

#include <csignal>
#include <thread>
#include <utility>

void onStopRequest(std::function<void()> stop)
{
    // A thread that waits for the signals may do what a handler must not.
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGHUP);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::thread([signals, stop = std::move(stop)] {
        int signal = 0;
        while (sigwait(&signals, &signal) == 0)
            stop();
    }).detach();
}
