#include "pc/audio_devices.h"

#include "simpc/sim_pc.h"

namespace audio_devices {

QStringList recordingNames()
{
    return SimPc::current().recordingDevices();
}

std::optional<WaveOut> firstWaveOut()
{
    const std::vector<SimWaveOut> devices = SimPc::current().waveOuts();
    if (devices.empty())
        return std::nullopt;
    return WaveOut{devices.front().channels, devices.front().name};
}

} // namespace audio_devices
