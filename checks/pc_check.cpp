#include "checks/pc_check.h"

#include "config/config_manager.h"
#include "pc/os_version.h"
#include "sysinfo/system_info.h"

#include <QCoreApplication>
#include <QDebug>
#include <QJsonArray>
#include <QJsonDocument>

namespace {

constexpr int oldestSystem = 10;
constexpr int enoughScore = 8;

const QList<quint16> streamingPorts = {9943, 9944, 50001, 50000};

// The controller's texts, whichever part speaks.
QString text(const char *source)
{
    return QCoreApplication::translate("ORBManager", source);
}

QJsonArray processorRow(const QString &value)
{
    return {text(QT_TRANSLATE_NOOP("ORBManager", "处理器：")), value};
}

QJsonArray graphicsRow(const QString &value)
{
    return {text(QT_TRANSLATE_NOOP("ORBManager", "显卡：")), value};
}

struct Values
{
    QString os;
    QString cpu;
    QString ram;
    QString gpu;
    QString directX;
};

QJsonArray column(const QString &title, const Values &values)
{
    const QJsonArray rows = {
        QJsonArray{text(QT_TRANSLATE_NOOP("ORBManager", "操作系统：")), values.os},
        processorRow(values.cpu),
        QJsonArray{text(QT_TRANSLATE_NOOP("ORBManager", "内存：")), values.ram},
        graphicsRow(values.gpu),
        QJsonArray{text(QT_TRANSLATE_NOOP("ORBManager", "DirectX 版本：")), values.directX},
    };
    return {title, rows};
}

QString compact(const QJsonArray &array)
{
    return QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

} // namespace

void PcCheck::compare()
{
    const QString gpus = system_.gpuNames().join(QLatin1Char('/'));
    const QString directX = SystemInfo::requiredDirectX();
    systemInfo_ = compact({
        column(
            text(QT_TRANSLATE_NOOP("ORBManager", "当前配置")),
            {system_.osText(), system_.cpuName(), system_.ramText(), gpus, system_.directXText()}),
        column(text(QT_TRANSLATE_NOOP("ORBManager", "最低配置")),
               {SystemInfo::minimumOs(), SystemInfo::minimumCpu(), SystemInfo::minimumRam(),
                SystemInfo::minimumGpu(), directX}),
        column(text(QT_TRANSLATE_NOOP("ORBManager", "推荐配置")),
               {SystemInfo::recommendedOs(), SystemInfo::recommendedCpu(),
                SystemInfo::recommendedRam(), SystemInfo::recommendedGpu(), directX}),
    });
    simplySystemInfo_ = compact({processorRow(system_.cpuName()), graphicsRow(gpus)});
}

void PcCheck::rememberNames()
{
    // Games are drawn by the discrete card, which comes first.
    gpuName_ = system_.gpuNames().value(0);
    cpuName_ = system_.cpuName();
}

PcCheck::Verdict PcCheck::judge() const
{
    Verdict verdict;
    if (!isNewEnough(os_version::product())) {
        qCritical("system not match");
        return verdict;
    }
    if (!isEnough(ConfigManager::hardwareScore(cpuName_, gpuName_))) {
        qCritical("cpu or gpu not match");
        return verdict;
    }
    verdict.canRun = true;
    verdict.driverTooOld = SystemInfo::needGpuDriverUpdate();
    return verdict;
}

bool PcCheck::isNewEnough(const QString &version)
{
    // One with a point in it is no number and counts as 0: all of these are too
    // old.
    return version.toInt() >= oldestSystem;
}

bool PcCheck::isEnough(int score)
{
    return score >= enoughScore;
}

QStringList PcCheck::portBlockers()
{
    return withoutOurOwn(SystemInfo::processesUsingPorts(streamingPorts));
}

QStringList PcCheck::withoutOurOwn(const QStringList &names)
{
    // Rows that only wait for their end belong to the system's idle process.
    const auto isOurs = [](const QString &name) {
        for (const char *part : {"vr", "steam", "System Process", "adb.exe"}) {
            if (name.contains(QLatin1String(part)))
                return true;
        }
        return false;
    };
    QStringList others;
    for (const QString &name : names) {
        if (!isOurs(name))
            others.append(name);
    }
    return others;
}
