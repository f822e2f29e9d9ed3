// Sound devices of this PC. Synchronous; on the GUI thread.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace audio_devices {

// The names of the recording devices as the system lists them, doubled and
// undecodable ones included.
QStringList recordingNames();

struct WaveOut
{
    int channels = 0;
    QString name;
};

// The first wave-output device; nothing when there is none.
std::optional<WaveOut> firstWaveOut();

} // namespace audio_devices
