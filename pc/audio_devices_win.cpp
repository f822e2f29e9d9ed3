#include "pc/audio_devices.h"

#include <QAudioDeviceInfo>

#include <windows.h>

#include <mmsystem.h>

namespace audio_devices {

QStringList recordingNames()
{
    QStringList names;
    const QList<QAudioDeviceInfo> devices = QAudioDeviceInfo::availableDevices(QAudio::AudioInput);
    for (const QAudioDeviceInfo &device : devices) {
        if (!device.isNull())
            names.append(device.deviceName());
    }
    return names;
}

std::optional<WaveOut> firstWaveOut()
{
    if (waveOutGetNumDevs() == 0)
        return std::nullopt;
    WAVEOUTCAPSW capabilities = {};
    if (waveOutGetDevCapsW(0, &capabilities, sizeof capabilities) != MMSYSERR_NOERROR)
        return std::nullopt;
    return WaveOut{capabilities.wChannels, QString::fromWCharArray(capabilities.szPname)};
}

} // namespace audio_devices
