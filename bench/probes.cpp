// What the questions about processes and ports cost, beside the tools that
// answer the same; how their cost grows; and what the first probe costs. On the
// simulated PC, with tables like those of a well-used one: what Windows itself
// needs to hand the tables out is not in these figures.
#include "base/clock.h"
#include "simpc/sim_pc.h"
#include "sysinfo/port_owners.h"
#include "sysinfo/system_info.h"

#include <QCoreApplication>
#include <QProcess>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace {

constexpr int rounds = 21;
constexpr int usualProcesses = 400;
constexpr int usualRows = 300;

// Microseconds a call, the median of the rounds.
template <typename Function>
double measure(int callsPerRound, Function &&function)
{
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < callsPerRound; ++i)
            function();
        const std::chrono::duration<double, std::micro> time =
            std::chrono::steady_clock::now() - start;
        times.push_back(time.count() / callsPerRound);
    }
    const auto middle = times.begin() + rounds / 2;
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

bool failed = false;

void run(const char *program, const QStringList &arguments)
{
    QProcess tool;
    tool.start(QString::fromLatin1(program), arguments);
    if (!tool.waitForFinished() || tool.exitStatus() != QProcess::NormalExit) {
        std::fprintf(stderr, "%s cannot be run\n", program);
        failed = true;
    }
}

void besideTools()
{
    const double byName = measure(200, [] { SystemInfo::isProcessRunning("vrserver.exe"); });
    const double pgrep = measure(1, [] { run("pgrep", {"-x", "vrserver.exe"}); });
    std::printf("probe_process_by_name %.1f us -\n", byName);
    std::printf("probe_process_by_name_pgrep %.1f us -\n", pgrep);
    std::printf("probe_process_by_name_gain %.1f x >=10\n", pgrep / byName);

    const QList<quint16> ports{9943, 9944, 50001, 50000};
    const double byPort = measure(200, [&] { SystemInfo::processesUsingPorts(ports); });
    const double ss = measure(1, [] { run("ss", {"-tanp"}); });
    std::printf("probe_ports %.1f us -\n", byPort);
    std::printf("probe_ports_ss %.1f us -\n", ss);
    std::printf("probe_ports_gain %.1f x >=10\n", ss / byPort);
}

// A process with hundreds of ports among `count` rows of others.
double portQuestion(int count)
{
    std::vector<tcp_table::Row> rows;
    std::vector<processes::Entry> running;
    const auto number = static_cast<quint32>(count);
    for (quint32 i = 0; i < number; ++i) {
        rows.push_back({static_cast<quint16>(1024 + i % 64000), i % 7 == 0 ? 4U : 1000 + i});
        running.push_back({1000 + i, QStringLiteral("program.exe")});
    }
    QList<quint16> ports; // a question with hundreds of ports finds hundreds of owners
    for (quint16 port = 2000; port < 2700; ++port)
        ports.append(port);
    return measure(3, [&] { port_owners::names(rows, running, ports); });
}

void growth()
{
    const double ten = portQuestion(10000);
    const double twenty = portQuestion(20000);
    std::printf("probe_ports_10000_rows %.1f us -\n", ten);
    std::printf("probe_ports_20000_rows_ratio %.2f x <=3\n", twenty / ten);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    SimPc pc(Clock::system());
    for (int i = 0; i < usualProcesses; ++i)
        pc.processes.start(QStringLiteral("program-%1.exe").arg(i));
    const std::vector<processes::Entry> running = pc.processes.list();
    for (int i = 0; i < usualRows; ++i)
        pc.ports.open(running[static_cast<size_t>(i)].pid, static_cast<quint16>(49152 + i));

    besideTools();
    growth();
    // The network's category is asked for in the background; starting that
    // question is part of the probe.
    std::printf("probe_first %.3f ms <=20\n", measure(1, [] { SystemInfo(); }) / 1000);
    return failed ? 1 : 0;
}
