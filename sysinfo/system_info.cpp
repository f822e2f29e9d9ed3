#include "sysinfo/system_info.h"

#include "pc/audio_devices.h"
#include "pc/command_pipe.h"
#include "pc/elevated_launch.h"
#include "pc/memory.h"
#include "pc/network_profile.h"
#include "pc/own_variables.h"
#include "pc/registry.h"
#include "sysinfo/driver_rules.h"
#include "sysinfo/graphics_rules.h"
#include "sysinfo/port_owners.h"

#include <QDebug>
#include <QProcess>
#include <QSysInfo>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

const QString virtualCableOutput = QStringLiteral("CABLE Output (VB-Audio Virtual Cable)");

const QString cableInstaller = QStringLiteral("/installaudio/VBCABLE_Setup_x64.exe");

// For a query that is killed at the end.
constexpr std::chrono::milliseconds queryEndLimit = 1s;

constexpr int outputChunk = 1024; // bytes of a command's output at a time

QString registryText(const char *key, const char *name)
{
    return registry::text(QStringLiteral("HKEY_LOCAL_MACHINE\\") + QLatin1String(key),
                          QLatin1String(name))
        .value_or(QString());
}

// The names are compared byte for byte, theirs in the user's encoding and ours
// in UTF-8: the executables asked for have plain names.
std::optional<quint32> firstOf(const std::vector<processes::Entry> &running, const QString &name)
{
    const QByteArray wanted = name.toUtf8();
    for (const processes::Entry &entry : running) {
        if (entry.name.toLocal8Bit() == wanted)
            return entry.pid;
    }
    return std::nullopt;
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
    powershellProcess_->setProcessEnvironment(own_variables::forChildren());
    powershellProcess_->start(query.program, query.arguments, QIODevice::ReadWrite);
}

SystemInfo::~SystemInfo()
{
    // A query that hangs must not delay the end of the program.
    powershellProcess_->disconnect(this);
    if (powershellProcess_->state() != QProcess::NotRunning) {
        powershellProcess_->kill();
        powershellProcess_->waitForFinished(static_cast<int>(queryEndLimit.count()));
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
    directX_ = graphics_rules::directXText(&feature_level::probe);
    const graphics_rules::Graphics graphics = graphics_rules::classify(graphics_adapters::list());
    integratedGraphics_ = graphics.integrated;
    discreteGraphics_ = graphics.discrete;
    vram_ = graphics.vram;
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
    const MutexLock lock(deviceSNMutex_);
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
    if (serial.isEmpty())
        return;
    const MutexLock lock(deviceSNMutex_);
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
    return QStringLiteral(KOLM_VERSION);
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

void SystemInfo::installVirtualCable(const QString &folder, const TellSigner &tell)
{
    qInfo().noquote() << folder;
    const auto mayStart = [&tell](const QString &signer) {
        if (signer.isEmpty())
            qWarning("install audio: nobody has signed the installer, it is not started");
        else
            qInfo().noquote() << "install audio: signed by" << signer;
        if (tell)
            tell(signer);
        return !signer.isEmpty();
    };
    const qint64 result = elevated_launch::start(folder + cableInstaller, folder, mayStart);
    qInfo().noquote().nospace() << "install audio res: " << result;
}

bool SystemInfo::isProcessRunning(const QString &name)
{
    return isAmong(processes::list(), name);
}

bool SystemInfo::isAmong(const std::vector<processes::Entry> &running, const QString &name)
{
    return firstOf(running, name).has_value();
}

bool SystemInfo::isAnyProcessRunning(const QStringList &names)
{
    const std::vector<processes::Entry> running = processes::list();
    return std::any_of(names.begin(), names.end(),
                       [&](const QString &name) { return isAmong(running, name); });
}

QString SystemInfo::processPath(const QString &name)
{
    const std::optional<quint32> pid = firstOf(processes::list(), name);
    return pid ? modulePathOf(*pid) : QString();
}

QString SystemInfo::modulePathOf(quint32 pid)
{
    return processes::modulePath(pid);
}

void SystemInfo::killProcesses(const QStringList &names, const std::function<bool()> &goesOn)
{
    for (const processes::Entry &entry : processes::list()) {
        if (names.contains(entry.name))
            processes::terminate(entry.pid, goesOn);
    }
}

QStringList SystemInfo::processesUsingPorts(const QList<quint16> &ports)
{
    const tcp_table::Table table = tcp_table::read();
    switch (table.failure) {
    case tcp_table::Table::NoMemory:
        qInfo("Error allocating memory\n");
        return {};
    case tcp_table::Table::NotAnswered:
        qInfo("\tGetTcpTable2 failed with %d\n", int(table.error));
        return {};
    case tcp_table::Table::None:
        break;
    }
    return port_owners::names(table.rows, processes::list(), ports);
}

QStringList SystemInfo::nvidiaDriverVersions()
{
    return driver_rules::nvidiaVersions(display_drivers::list());
}

bool SystemInfo::needGpuDriverUpdate()
{
    return driver_rules::needUpdate(nvidiaDriverVersions());
}

QString SystemInfo::runCommand(const QByteArray &commandLine)
{
    CommandPipe pipe(commandLine);
    switch (pipe.failure()) {
    case CommandPipe::NoPipe:
        qInfo("CreatePipe failed!");
        return {};
    case CommandPipe::NoProcess:
        qInfo(" CreateProcess failed!");
        return {};
    case CommandPipe::None:
        break;
    }
    QByteArray output;
    char chunk[outputChunk];
    for (int got = pipe.read(chunk, outputChunk); got >= 0; got = pipe.read(chunk, outputChunk))
        output.append(chunk, got);
    return QString::fromUtf8(output);
}
