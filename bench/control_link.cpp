// What the control link costs:
// - a round trip, beside a bare epoll server that answers with the same bytes;
//   both take turns, so that whatever else the machine does meets both;
// - understanding a list of headsets, which has to be linear;
// - an idle link, which has to cost nothing.
//
// The link's echo is written with its system call, to /dev/null. Its log lines
// are made, one for every command, but an empty handler drops them: what a line
// in the log costs is measured elsewhere.
#include "base/clock.h"
#include "link/command_protocol.h"
#include "link/sys_manager.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QString>

#include <algorithm>
#include <arpa/inet.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <iostream>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <string>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Micro = std::chrono::duration<double, std::micro>;
using SteadyClock = std::chrono::steady_clock;

constexpr char question[] = "Hello\n";
constexpr std::size_t questionSize = sizeof question - 1;
constexpr char answer[] = "HHHH, You can see me!\n";
constexpr std::size_t answerSize = sizeof answer; // with its NUL

constexpr int rounds = 60;
constexpr int tripsPerRound = 1000;
constexpr auto idleTime = 5s;

[[noreturn]] void fail(const char *what)
{
    std::perror(what);
    std::exit(1);
}

void check(bool good, const char *what)
{
    if (!good)
        fail(what);
}

sockaddr_in loopback(int port)
{
    sockaddr_in name{};
    name.sin_family = AF_INET;
    name.sin_port = htons(static_cast<std::uint16_t>(port));
    name.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return name;
}

void noDelay(int fd)
{
    const int on = 1;
    setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

// A socket that listens on a port of the system's choice.
int listenAnywhere(int *port)
{
    const int fd = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in name = loopback(0);
    socklen_t length = sizeof name;
    check(bind(fd, reinterpret_cast<sockaddr *>(&name), length) == 0 && listen(fd, 10) == 0 &&
              getsockname(fd, reinterpret_cast<sockaddr *>(&name), &length) == 0,
          "listen");
    *port = ntohs(name.sin_port);
    return fd;
}

// The least that a server can do for one client; until the client closes.
void serveBare(int listening)
{
    const int client = accept(listening, nullptr, nullptr);
    check(client >= 0, "accept");
    noDelay(client);
    const int poll = epoll_create1(0);
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = client;
    epoll_ctl(poll, EPOLL_CTL_ADD, client, &event);
    char buffer[1000];
    while (epoll_wait(poll, &event, 1, -1) == 1) {
        if (recv(event.data.fd, buffer, sizeof buffer, 0) <= 0)
            break;
        send(event.data.fd, answer, answerSize, MSG_NOSIGNAL);
    }
    close(poll);
    close(client);
}

int connectTo(int port)
{
    const int fd = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in name = loopback(port);
    check(connect(fd, reinterpret_cast<const sockaddr *>(&name), sizeof name) == 0, "connect");
    noDelay(fd);
    return fd;
}

void roundTrip(int fd)
{
    char buffer[answerSize];
    check(send(fd, question, questionSize, MSG_NOSIGNAL) == static_cast<ssize_t>(questionSize) &&
              recv(fd, buffer, answerSize, MSG_WAITALL) == static_cast<ssize_t>(answerSize) &&
              std::equal(buffer, buffer + answerSize, answer),
          "round trip");
}

void roundTrips(int fd, std::vector<double> *microseconds)
{
    for (int i = 0; i < tripsPerRound; ++i) {
        const auto start = SteadyClock::now();
        roundTrip(fd);
        microseconds->push_back(Micro(SteadyClock::now() - start).count());
    }
}

double quantile(std::vector<double> values, double share)
{
    const auto at = static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), values.begin() + at, values.end());
    return values[static_cast<std::size_t>(at)];
}

QSet<QString> threads()
{
    const QStringList names =
        QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return QSet<QString>(names.begin(), names.end());
}

// How often a thread has been taken off or has left its processor.
long contextSwitches(const QString &thread)
{
    QFile status(QStringLiteral("/proc/self/task/%1/status").arg(thread));
    check(status.open(QIODevice::ReadOnly), "status");
    long switches = 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.contains("ctxt_switches"))
            switches += line.mid(line.indexOf(':') + 1).trimmed().toLong();
    }
    return switches;
}

std::string report(int headsets)
{
    std::string argument = "deviceId:D3X0000000";
    for (int i = 0; i < headsets; ++i)
        argument += "~D3X" + std::to_string(1000000 + i) + ";192.168.100.101;true;4";
    return argument;
}

// Microseconds for one report.
double parseTime(int headsets)
{
    const std::string argument = report(headsets);
    const int repeats = std::max(1, 100000 / headsets);
    std::vector<double> times;
    for (int round = 0; round < 15; ++round) {
        const auto start = SteadyClock::now();
        for (int i = 0; i < repeats; ++i) {
            const command_protocol::Command command =
                command_protocol::parse({"HMDINFOBACK", argument});
            const auto *info = std::get_if<command_protocol::HmdInfoBack>(&command);
            check(info && info->headsets.size() == headsets, "parse");
        }
        times.push_back(Micro(SteadyClock::now() - start).count() / repeats);
    }
    return quantile(times, 0.5);
}

void dropLog(QtMsgType, const QMessageLogContext &, const QString &) {}

// Standard output as it was; from now on it goes nowhere.
FILE *takeOutput()
{
    FILE *output = fdopen(dup(STDOUT_FILENO), "w");
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    check(output && nowhere >= 0 && dup2(nowhere, STDOUT_FILENO) >= 0, "output");
    close(nowhere);
    return output;
}

} // namespace

int main()
{
    std::ios::sync_with_stdio(false);
    FILE *output = takeOutput();
    qInstallMessageHandler(dropLog);

    int barePort = 0;
    const int bareListening = listenAnywhere(&barePort);
    std::thread bareServer([bareListening] { serveBare(bareListening); });
    const int bare = connectTo(barePort);
    roundTrip(bare);

    int port = 0;
    close(listenAnywhere(&port));
    const QSet<QString> before = threads();
    SysManager manager({}, port);
    check(manager.start(), "start");
    const QSet<QString> started = threads() - before;
    check(started.size() == 1, "worker");
    const QString worker = *started.begin();
    const int link = connectTo(port);
    roundTrip(link);

    std::vector<double> bareTimes;
    std::vector<double> linkTimes;
    for (int round = 0; round < rounds; ++round) {
        roundTrips(bare, &bareTimes);
        roundTrips(link, &linkTimes);
    }
    const auto compare = [&](const char *name, double share, double goal) {
        const double ofBare = quantile(bareTimes, share);
        const double ofLink = quantile(linkTimes, share);
        std::fprintf(output, "control_link_bare_%s %.1f us -\n", name, ofBare);
        std::fprintf(output, "control_link_%s %.1f us -\n", name, ofLink);
        std::fprintf(output, "control_link_%s_ratio %.2f x %.2f\n", name, ofLink / ofBare, goal);
    };
    compare("p50", 0.50, 2.0);
    compare("p99", 0.99, 3.0);

    // Let the last round trip come to rest before counting.
    Clock::system().sleep(100ms);
    const long switchesBefore = contextSwitches(worker);
    const quint64 wakeUpsBefore = manager.wakeUps();
    Clock::system().sleep(idleTime);
    std::fprintf(output, "control_link_idle_context_switches %ld per_%ds 0\n",
                 contextSwitches(worker) - switchesBefore, static_cast<int>(idleTime.count()));
    std::fprintf(output, "control_link_idle_wake_ups %llu per_%ds 0\n",
                 manager.wakeUps() - wakeUpsBefore, static_cast<int>(idleTime.count()));

    const double perHeadset = parseTime(1000) / 1000;
    for (int headsets : {10, 1000, 100000}) {
        const double time = parseTime(headsets);
        std::fprintf(output, "control_link_parse_%d %.2f us -\n", headsets, time);
        std::fprintf(output, "control_link_parse_%d_per_headset_ratio %.2f x 2.00\n", headsets,
                     time / headsets / perHeadset);
    }

    close(bare);
    close(link);
    bareServer.join();
    close(bareListening);
    std::fclose(output);
    return 0;
}
