#include "pc/display_drivers.h"
#include "pc/feature_level.h"
#include "pc/graphics_adapters.h"
#include "pc/os_version.h"
#include "sysinfo/driver_rules.h"
#include "sysinfo/graphics_rules.h"
#include "sysinfo/system_info.h"
#include "tests/support/test_case.h"

#include <QFile>
#include <QProcess>
#include <QSysInfo>

#include <windows.h>

#include <d3d11.h>

namespace {

constexpr int limit = 60000; // ms

QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished(limit) ? process.readAllStandardOutput() : QByteArray();
}

// What the system's management tool says of a class, one value a line.
QStringList managed(const QString &path, const QString &property)
{
    const QByteArray said = outputOf(
        QStringLiteral("wmic"), {QStringLiteral("path"), path, QStringLiteral("get"), property});
    // Into a pipe some systems write narrow text.
    const QString text =
        said.contains('\0') ? QString::fromUtf16(reinterpret_cast<const ushort *>(said.constData()),
                                                 static_cast<int>(said.size() / 2))
                            : QString::fromLocal8Bit(said);
    QStringList lines;
    for (const QString &line : text.split(QChar('\n')))
        lines.append(line.trimmed());
    lines.removeAll(QString());
    return lines.mid(1); // below the heading
}

// The display devices by the registry's own tool: their identifiers with
// their bus.
QStringList listedDevices()
{
    const QString text = QString::fromLocal8Bit(outputOf(
        QStringLiteral("reg"),
        {QStringLiteral("query"), QStringLiteral("HKLM\\System\\CurrentControlSet\\Enum\\PCI"),
         QStringLiteral("/s")}));
    QStringList devices;
    QString key;
    for (const QString &line : text.split(QChar('\n'))) {
        if (line.startsWith(QLatin1String("HKEY_")))
            key = line.trimmed();
        else if (line.contains(QLatin1String("ClassGUID")) &&
                 line.contains(QLatin1String("{4D36E968-"), Qt::CaseInsensitive))
            devices.append(key.section(QChar('\\'), -3, -2));
    }
    return devices;
}

// A driver package for a device in the system's store, as long as it lives.
class DriverPackage
{
public:
    DriverPackage(const QString &name, const QString &manufacturer, const QString &device)
        : file_(QString::fromLocal8Bit(qgetenv("SystemRoot")) + QStringLiteral("\\inf\\") + name)
    {
        if (!file_.open(QIODevice::WriteOnly))
            return;
        file_.write(QStringLiteral("[Version]\r\n"
                                   "Signature=\"$CHICAGO$\"\r\n"
                                   "Class=Display\r\n"
                                   "ClassGuid={4d36e968-e325-11ce-bfc1-08002be10318}\r\n"
                                   "Provider=\"Somebody else\"\r\n"
                                   "DriverVer=02/15/2024,31.0.15.5176\r\n"
                                   "[Manufacturer]\r\n"
                                   "%1=Models,NTamd64\r\n"
                                   "[Models.NTamd64]\r\n"
                                   "\"A card\"=Install,%2\r\n"
                                   "[Install]\r\n")
                        .arg("\"" + manufacturer + "\"", device)
                        .toLatin1());
        file_.close();
    }
    ~DriverPackage() { file_.remove(); }

private:
    QFile file_;
};

} // namespace

// Graphics and system version, each against another way of asking the same PC.
class GraphicsWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void theAdaptersAreThoseOfTheManagementTool()
    {
        const std::vector<graphics_adapters::Adapter> adapters = graphics_adapters::list();
        QStringList names;
        QStringList devices;
        QStringList memory;
        for (const graphics_adapters::Adapter &adapter : adapters) {
            names.append(adapter.name);
            devices.append(QStringLiteral("PCI\\VEN_%1&DEV_%2")
                               .arg(adapter.vendorId, 4, 16, QChar('0'))
                               .arg(adapter.deviceId, 4, 16, QChar('0'))
                               .toUpper());
            // That tool counts in 32 bits and stops at their end, in whole MiB.
            const quint64 shown = qMin<quint64>(adapter.dedicatedMemory, 0xfff00000);
            memory.append(QString::number(static_cast<qint32>(shown)));
        }
        QVERIFY(!names.isEmpty());
        const QString controller = QStringLiteral("Win32_VideoController");
        QCOMPARE(managed(controller, QStringLiteral("Name")), names);
        QStringList managedDevices;
        for (const QString &id : managed(controller, QStringLiteral("PNPDeviceID")))
            managedDevices.append(id.section(QChar('&'), 0, 1).toUpper());
        QCOMPARE(managedDevices, devices);
        QCOMPARE(managed(controller, QStringLiteral("AdapterRAM")), memory);
    }

    void theLevelIsTheDevicesOwnUpTo11()
    {
        ID3D11Device *device = nullptr;
        QVERIFY(SUCCEEDED(D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, 0, nullptr,
                                            0, D3D11_SDK_VERSION, &device, nullptr, nullptr)));
        const quint32 own = device->GetFeatureLevel();
        device->Release();
        const feature_level::Answer answer =
            feature_level::probe({0xb000, 0xa100, 0xa000, 0x9300, 0x9200, 0x9100});
        QCOMPARE(answer.result, 0U);
        QCOMPARE(answer.level, qMin(own, 0xb000U));
        // Each level that it can have is given when it is asked for first.
        QCOMPARE(feature_level::probe({0x9100}).level, 0x9100U);
        QCOMPARE(feature_level::probe({0xa000, 0xb000}).level, qMin(own, 0xa000U));
    }

    void aLevelThatDoesNotExistIsAnError()
    {
        const feature_level::Answer answer = feature_level::probe({0xf000});
        QVERIFY(answer.result != 0);
        QCOMPARE(answer.level, 0U);
    }

    void theDisplayDevicesAreThoseOfTheRegistry()
    {
        const QStringList listed = listedDevices();
        QVERIFY(!listed.isEmpty());
        const auto devices = display_drivers::list();
        QVERIFY(devices);
        QCOMPARE(static_cast<int>(devices->size()), listed.size());
        for (const display_drivers::Device &device : *devices) {
            QVERIFY(device.listed);
            QVERIFY(device.drivers.empty()); // this PC has no packages for it
        }
        QCOMPARE(SystemInfo::nvidiaDriverVersions(), QStringList());
        QVERIFY(!SystemInfo::needGpuDriverUpdate());
    }

    void driversInTheStoreCountAlthoughTheyAreNotInUse()
    {
        const QString device = listedDevices().value(0);
        const DriverPackage first(QStringLiteral("kolm1.inf"), QStringLiteral("NVIDIA"), device);
        const DriverPackage second(QStringLiteral("kolm2.inf"),
                                   QStringLiteral("NVIDIA Corporation"), device);
        const DriverPackage other(QStringLiteral("kolm3.inf"), QStringLiteral("NVIDIA"),
                                  QStringLiteral("PCI\\VEN_1234&DEV_5678"));
        const auto devices = display_drivers::list();
        QVERIFY(devices && !devices->empty());
        QStringList manufacturers;
        for (const display_drivers::Driver &driver : devices->front().drivers)
            manufacturers.append(driver.manufacturer);
        manufacturers.sort();
        QCOMPARE(manufacturers, QStringList({"NVIDIA", "NVIDIA Corporation"}));
        // Wine lists the packages without their versions.
        QCOMPARE(SystemInfo::nvidiaDriverVersions().size(), 1);
    }

    void theSystemsVersionIsTheOneThatItReportsElsewhere()
    {
        const QString version =
            managed(QStringLiteral("Win32_OperatingSystem"), QStringLiteral("Version")).value(0);
        QCOMPARE(os_version::product(), version.section(QChar('.'), 0, 0));
    }

    void theWholeProbeAgreesWithItsParts()
    {
        const SystemInfo info;
        const graphics_rules::Graphics graphics =
            graphics_rules::classify(graphics_adapters::list());
        const QStringList names = info.gpuNames();
        QCOMPARE(names.contains(graphics.discrete), !graphics.discrete.isEmpty());
        QCOMPARE(names.contains(graphics.integrated), !graphics.integrated.isEmpty());
        QVERIFY(!names.isEmpty());
        QCOMPARE(info.directXText(), QString("DirectX 11.0"));
        QCOMPARE(info.toJson().value("vram").toString(), graphics.vram);
    }
};

KOLM_TEST_MAIN(GraphicsWinTest)
#include "tst_graphics_win.moc"
