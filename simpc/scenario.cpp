#include "simpc/scenario.h"

namespace {

QString acLineText(const std::optional<int> &status)
{
    if (!status)
        return QStringLiteral("fails");
    return *status == 0   ? QStringLiteral("offline")
           : *status == 1 ? QStringLiteral("online")
                          : QStringLiteral("unknown");
}

// As the system's query prints it.
QString networkText(const QStringList &categories)
{
    QStringList lines;
    for (const QString &category : categories)
        lines.append(QStringLiteral("NetworkCategory  : ") + category);
    return lines.join('\n');
}

QString listText(const QStringList &names)
{
    return names.isEmpty() ? QStringLiteral("none") : names.join(", ");
}

QString waveOutText(const std::vector<SimWaveOut> &devices)
{
    QStringList names;
    for (const SimWaveOut &device : devices)
        names.append(QStringLiteral("%1 (%2 channels)").arg(device.name).arg(device.channels));
    return listText(names);
}

QString cableText(const std::vector<SimHeadset> &cable)
{
    QStringList names;
    for (const SimHeadset &headset : cable)
        names.append(headset.serial + (headset.state == QLatin1String("device")
                                           ? QString()
                                           : QStringLiteral(" (%1)").arg(headset.state)));
    return listText(names);
}

// The beginning is no news; every later change is.
void apply(const PcChange &change, SimPc &pc, bool isNews)
{
    const auto news = [&pc, isNews](const QString &line) {
        if (isNews)
            pc.events.add(line);
    };
    if (change.acLine) {
        pc.setAcLine(*change.acLine);
        news(QStringLiteral("power line: ") + acLineText(*change.acLine));
    }
    if (change.network) {
        pc.setNetworkProfileText(networkText(*change.network));
        news(QStringLiteral("network: ") + listText(*change.network));
    }
    if (change.recordingDevices) {
        pc.setRecordingDevices(*change.recordingDevices);
        news(QStringLiteral("recording devices: ") + listText(*change.recordingDevices));
    }
    if (change.waveOuts) {
        pc.setWaveOuts(*change.waveOuts);
        news(QStringLiteral("sound outputs: ") + waveOutText(*change.waveOuts));
    }
    if (change.cable) {
        pc.usb.setCable(*change.cable);
        news(QStringLiteral("on the USB cable: ") + cableText(*change.cable));
    }
    if (change.wired) {
        news(QStringLiteral("the person chooses ") +
             (*change.wired ? QStringLiteral("USB") : QStringLiteral("Wi-Fi")));
        pc.modeChoice.tell(*change.wired);
    }
    for (const StartingProcess &process : change.starting) {
        const quint32 pid = pc.processes.start(process.name, process.path);
        for (const quint16 port : process.ports)
            pc.ports.open(pid, port);
        news(process.name + QStringLiteral(" starts"));
    }
    for (const QString &name : change.ending) {
        pc.processes.endAll(name);
        news(name + QStringLiteral(" ends"));
    }
}

} // namespace

void scenario::build(const Scenario &scenario, SimPc &pc)
{
    for (const RegistryValue &value : scenario.registry)
        pc.registry.setText(value.key, value.name, value.text);
    pc.setTotalMemory(scenario.memory);
    pc.setOsVersion(scenario.osVersion);
    pc.setHardware(scenario.hardware);
    pc.setNetworkQuery(scenario.networkQuery);
    for (auto command = scenario.commands.begin(); command != scenario.commands.end(); ++command)
        pc.setCommand(command.key(), command.value());
    apply(scenario.beginning, pc, false);
    installSteam(pc, scenario.steam);
    for (const TimelineEntry &entry : scenario.timeline)
        pc.timeline.after(entry.at, [&pc, change = entry.change] { apply(change, pc, true); });
}
