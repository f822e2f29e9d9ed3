// The questions to which the simulated PC simply knows the answer.
#include "pc/audio_devices.h"
#include "pc/display_drivers.h"
#include "pc/feature_level.h"
#include "pc/graphics_adapters.h"
#include "pc/memory.h"
#include "pc/network_profile.h"
#include "pc/os_version.h"
#include "pc/power.h"

#include "simpc/sim_pc.h"

namespace {

const SimFacts &facts()
{
    return SimPc::current().facts;
}

} // namespace

QStringList audio_devices::recordingNames()
{
    return facts().recordingDevices.get();
}

std::optional<audio_devices::WaveOut> audio_devices::firstWaveOut()
{
    const std::vector<WaveOut> devices = facts().waveOuts.get();
    return devices.empty() ? std::nullopt : std::optional<WaveOut>(devices.front());
}

std::optional<std::vector<display_drivers::Device>> display_drivers::list()
{
    return facts().displayDevices.get();
}

feature_level::Answer feature_level::probe(const std::vector<quint32> &levels)
{
    const Answer best = facts().direct3D.get();
    if (best.result != 0)
        return {best.result, 0};
    for (const quint32 level : levels) {
        if (level <= best.level)
            return {0, level};
    }
    constexpr quint32 unsupported = 0x887a0004;
    return {unsupported, 0};
}

std::vector<graphics_adapters::Adapter> graphics_adapters::list()
{
    return facts().adapters.get();
}

quint64 memory::totalPhysical()
{
    return facts().memoryBytes.get();
}

network_profile::Query network_profile::query()
{
    // A real child process with real output; only its text is the simulated
    // PC's.
    switch (facts().networkQuery.get()) {
    case SimNetworkQuery::Missing:
        return {QStringLiteral("no-such-program"), {}};
    case SimNetworkQuery::Hangs:
        return {QStringLiteral("cat"), {}}; // for input that never comes
    case SimNetworkQuery::Answers:
        break;
    }
    // A line for each network; without one the filter behind the query lets nothing by.
    QString text;
    for (const QString &category : facts().network.get())
        text += QStringLiteral("NetworkCategory  : ") + category + '\n';
    return {QStringLiteral("printf"), {QStringLiteral("%s"), text}};
}

QString os_version::product()
{
    return facts().osVersion.get();
}

std::optional<power::AcLine> power::acLine()
{
    return facts().acLine.get();
}
