#include "sysinfo/system_info.h"

#include "sysinfo/audio_devices.h"
#include "sysinfo/memory.h"
#include "sysinfo/network_profile.h"
#include "sysinfo/processes.h"
#include "sysinfo/registry.h"

#include <QDebug>
#include <QProcess>
#include <QSysInfo>

namespace {

const QString virtualCableOutput = QStringLiteral("CABLE Output (VB-Audio Virtual Cable)");

QString registryText(const char *key, const char *name)
{
    return registry::text(QStringLiteral("HKEY_LOCAL_MACHINE\\") + QLatin1String(key),
                          QLatin1String(name))
        .value_or(QString());
}

} // namespace

SystemInfo::SystemInfo(QObject *parent) : QObject(parent), powershellProcess_(new QProcess(this))
{
    connect(powershellProcess_, &QProcess::readyReadStandardOutput, this,
            &SystemInfo::readNetworkCategory);
    probe();

    // What the network is like takes the system seconds to say: until then it
    // counts as private.
    networkCategory_ = QStringLiteral("Private");
    const network_profile::Query query = network_profile::query();
    powershellProcess_->start(query.program, query.arguments, QIODevice::ReadWrite);
}

SystemInfo::~SystemInfo()
{
    // A query that hangs must not delay the end of the program.
    powershellProcess_->disconnect(this);
    if (powershellProcess_->state() != QProcess::NotRunning) {
        powershellProcess_->kill();
        powershellProcess_->waitForFinished(1000);
    }
}

SystemInfo &SystemInfo::instance()
{
    static SystemInfo info;
    return info;
}

void SystemInfo::probe()
{
    version_ = assistantVersion();
    os_ = registryText("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion", "ProductName");
    hostName_ = QSysInfo::machineHostName();
    machineGuid_ = registryText("SOFTWARE\\Microsoft\\Cryptography", "MachineGuid");
    cpu_ =
        registryText("HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0", "ProcessorNameString");
    ram_ = ramTextOf(memory::totalPhysical());
}

void SystemInfo::readNetworkCategory()
{
    const QString text = QString::fromLocal8Bit(powershellProcess_->readAllStandardOutput());
    qInfo().noquote().nospace() << "powershellcmd res:" << text;
    networkCategory_ = networkCategoryOf(text);
}

QString SystemInfo::ramTextOf(quint64 totalPhysicalBytes)
{
    return QString::number((totalPhysicalBytes >> 30) + 1) + QStringLiteral(" GB RAM");
}

QString SystemInfo::networkCategoryOf(const QString &queryOutput)
{
    // One public network is enough to be careful.
    for (const QString &category : {QStringLiteral("Public"), QStringLiteral("Private")}) {
        if (queryOutput.contains(category))
            return category;
    }
    return {};
}

QJsonObject SystemInfo::toJson() const
{
    return {
        {QStringLiteral("streamingAssistantVersion"), version_},
        {QStringLiteral("GUID"), machineGuid_},
        {QStringLiteral("os"), os_},
        {QStringLiteral("cpu"), cpu_},
        {QStringLiteral("ram"), ram_},
        {QStringLiteral("integratedGraphics"), integratedGraphics_},
        {QStringLiteral("discreteGraphics"), discreteGraphics_},
        {QStringLiteral("vram"), vram_},
        // The cloud's own spelling of the key.
        {QStringLiteral("deciveSN"), deviceSN_},
    };
}

QStringList SystemInfo::gpuNames() const
{
    QStringList names{discreteGraphics_, integratedGraphics_};
    names.removeAll(QString());
    return names;
}

void SystemInfo::setDeviceSN(const QString &serial)
{
    if (!serial.isEmpty() && serial != deviceSN_)
        deviceSN_ = serial;
}

QString SystemInfo::minimumCpu()
{
    return tr("Intel Core i5-6600/AMD锐龙3 1300X同等性能及以上");
}

QString SystemInfo::minimumGpu()
{
    return tr("NVDIA GeFore GTX 970/AMD RX 480 同等性能及以上");
}

QString SystemInfo::minimumOs()
{
    return QStringLiteral("Windows 10");
}

QString SystemInfo::minimumRam()
{
    return QStringLiteral("8 GB RAM");
}

QString SystemInfo::recommendedCpu()
{
    return tr("Intel Core i7-9700/AMD 锐龙5 3600 同等性能及以上");
}

QString SystemInfo::recommendedGpu()
{
    return tr("NVDIA GeFore RTX 3060/AMD RX 6600XT 同等性能及以上");
}

QString SystemInfo::recommendedOs()
{
    return QStringLiteral("Windows 10/11");
}

QString SystemInfo::recommendedRam()
{
    return QStringLiteral("16 GB RAM");
}

QString SystemInfo::requiredDirectX()
{
    return QStringLiteral("DirectX 11");
}

QString SystemInfo::assistantVersion()
{
    return QStringLiteral("1.1.16.420");
}

bool SystemInfo::isAudioOutputSupported()
{
    if (audioSupported_)
        return true;
    const std::optional<audio_devices::WaveOut> device = audio_devices::firstWaveOut();
    if (!device)
        return false;
    qInfo().noquote().nospace() << "audio supoort :" << device->channels << device->name;
    audioSupported_ = device->channels == 2;
    return audioSupported_;
}

bool SystemInfo::hasVirtualCable()
{
    QStringList names;
    const QStringList devices = audio_devices::recordingNames();
    for (const QString &name : devices) {
        // A name that starts with the replacement character could not be read.
        if (!name.isEmpty() && name.front() != QChar::ReplacementCharacter && !names.contains(name))
            names.append(name);
    }
    if (names.contains(virtualCableOutput))
        return true;
    qInfo() << names;
    return false;
}

bool SystemInfo::isProcessRunning(const QString &name)
{
    for (const processes::Entry &entry : processes::list()) {
        if (entry.name == name)
            return true;
    }
    return false;
}

QString SystemInfo::processPath(const QString &name)
{
    for (const processes::Entry &entry : processes::list()) {
        if (entry.name == name)
            return processes::modulePath(entry.pid);
    }
    return {};
}

void SystemInfo::killProcesses(const QStringList &names)
{
    for (const processes::Entry &entry : processes::list()) {
        if (names.contains(entry.name))
            processes::terminate(entry.pid);
    }
}
