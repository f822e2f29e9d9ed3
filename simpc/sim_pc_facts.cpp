// What a simulated PC is asked for and simply keeps.
#include "simpc/sim_pc.h"

void SimPc::setAcLine(std::optional<int> status)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    acLine_ = status;
}

std::optional<int> SimPc::acLine() const
{
    timeline.settle();
    const std::lock_guard<std::mutex> lock(mutex_);
    return acLine_;
}

void SimPc::setTotalMemory(quint64 bytes)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    totalMemory_ = bytes;
}

quint64 SimPc::totalMemory() const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return totalMemory_;
}

void SimPc::setNetworkProfileText(const QString &text)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    networkProfile_ = text;
}

QString SimPc::networkProfileText() const
{
    timeline.settle();
    const std::lock_guard<std::mutex> lock(mutex_);
    return networkProfile_;
}

void SimPc::setRecordingDevices(const QStringList &names)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    recordingDevices_ = names;
}

QStringList SimPc::recordingDevices() const
{
    timeline.settle();
    const std::lock_guard<std::mutex> lock(mutex_);
    return recordingDevices_;
}

void SimPc::setWaveOuts(const std::vector<SimWaveOut> &devices)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    waveOuts_ = devices;
}

std::vector<SimWaveOut> SimPc::waveOuts() const
{
    timeline.settle();
    const std::lock_guard<std::mutex> lock(mutex_);
    return waveOuts_;
}

SimCell &SimPc::cell() const
{
    timeline.settle();
    const std::lock_guard<std::mutex> lock(mutex_);
    return *cell_;
}

void SimPc::setCell(std::unique_ptr<SimCell> cell)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    cell_ = std::move(cell);
}

void SimPc::failTcpTable(quint32 error)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    tcpTableError_ = error;
}

std::optional<quint32> SimPc::tcpTableError() const
{
    timeline.settle();
    const std::lock_guard<std::mutex> lock(mutex_);
    return tcpTableError_;
}

void SimPc::setOsVersion(const QString &version)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    osVersion_ = version;
}

QString SimPc::osVersion() const
{
    timeline.settle();
    const std::lock_guard<std::mutex> lock(mutex_);
    return osVersion_;
}

void SimPc::setHardware(const SimHardware &hardware)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    hardware_ = hardware;
}

SimHardware SimPc::hardware() const
{
    timeline.settle();
    const std::lock_guard<std::mutex> lock(mutex_);
    return hardware_;
}

void SimPc::setNetworkQuery(SimNetworkQuery query)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    networkQuery_ = query;
}

SimNetworkQuery SimPc::networkQuery() const
{
    timeline.settle();
    const std::lock_guard<std::mutex> lock(mutex_);
    return networkQuery_;
}

void SimPc::setCommand(const QString &name, const QByteArray &script)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    commands_[name] = script;
}

std::optional<QByteArray> SimPc::runCommand(const QByteArray &commandLine)
{
    timeline.settle();
    const QString line = QString::fromUtf8(commandLine);
    journal.add("command " + line);
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto command = commands_.constFind(line.section(' ', 0, 0));
    if (command == commands_.constEnd())
        return std::nullopt;
    return *command;
}
