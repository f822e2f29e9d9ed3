#include "simpc/scenario_hardware.h"

#include "simpc/object_reader.h"
#include "simpc/scenario.h"

namespace {

constexpr qint64 gibibyte = 1LL << 30;

// A good card with a new driver.
const SimAdapter usualAdapter = {0x10de, 0x2503, QStringLiteral("NVIDIA GeForce RTX 3060"),
                                 12 * gibibyte - 1};
const SimDriver usualDriver = {QStringLiteral("NVIDIA"), 0x0020'0000'000f'19ec}; // 32.0.15.6636

SimAdapter readAdapter(ObjectReader &reader)
{
    const quint32 vendors[] = {0x10de, 0x1002, 0x8086, 0x1414};
    const int vendor =
        reader.choice(QStringLiteral("vendor"), {"nvidia", "amd", "intel", "microsoft"}, 0);
    SimAdapter adapter;
    adapter.vendorId = vendors[qMax(0, vendor)];
    adapter.deviceId = static_cast<quint32>(reader.number(QStringLiteral("device"), 0, 1));
    adapter.name = reader.text(QStringLiteral("name"), QString());
    adapter.memory = static_cast<quint64>(reader.number(QStringLiteral("memoryBytes"), 0, 0));
    if (adapter.name.isEmpty())
        reader.fail(QStringLiteral("name"), QStringLiteral("is missing"));
    reader.done();
    return adapter;
}

SimDriver readDriver(ObjectReader &reader)
{
    const QString key = QStringLiteral("version");
    SimDriver driver;
    driver.manufacturer = reader.text(QStringLiteral("manufacturer"), QStringLiteral("NVIDIA"));
    const QStringList fields = reader.text(key, QString()).split('.');
    bool good = fields.size() == 4;
    for (const QString &field : fields) {
        bool ok = false;
        driver.version = driver.version << 16 | field.toUShort(&ok);
        good = good && ok;
    }
    if (!good)
        reader.fail(key, QStringLiteral("must be four numbers up to 65535, like \"31.0.15.5176\""));
    reader.done();
    return driver;
}

SimDirect3D readDirect3D(ObjectReader &pc)
{
    const SimDirect3D answers[] = {
        {0, 0xb000}, {0, 0xa100},     {0, 0xa000},     {0, 0x9300},
        {0, 0x9100}, {0x80070057, 0}, {0x887a0004, 0},
    };
    const int word =
        pc.choice(QStringLiteral("direct3D"),
                  {"11.0", "10.1", "10.0", "9.3", "9.1", "level 11 unknown", "fails"}, 0);
    return answers[qMax(0, word)];
}

// A shell script that prints the text.
QByteArray printing(const QString &text)
{
    QString quoted = text;
    quoted.replace('\'', QStringLiteral("'\\''"));
    return "printf %s '" + quoted.toUtf8() + '\'';
}

} // namespace

void scenario::readHardware(ObjectReader &pc, Scenario *scenario)
{
    scenario->osVersion = pc.text(QStringLiteral("osVersion"), QStringLiteral("10"));
    // A little of the 16 GiB is not the system's to use.
    scenario->memory =
        static_cast<quint64>(pc.number(QStringLiteral("memoryBytes"), 0, 16 * gibibyte - 1));

    SimHardware &hardware = scenario->hardware;
    const QString adapters = QStringLiteral("adapters");
    if (!pc.has(adapters))
        hardware.adapters = {usualAdapter};
    for (ObjectReader &entry : pc.objects(adapters))
        hardware.adapters.push_back(readAdapter(entry));
    const QString drivers = QStringLiteral("displayDrivers");
    SimDisplayDevice device;
    if (!pc.has(drivers))
        device.drivers = {usualDriver};
    for (ObjectReader &entry : pc.objects(drivers))
        device.drivers.push_back(readDriver(entry));
    hardware.displayDevices = {device};
    hardware.direct3D = readDirect3D(pc);

    const int query = pc.choice(QStringLiteral("networkQuery"), {"answers", "missing", "hangs"}, 0);
    const SimNetworkQuery queries[] = {SimNetworkQuery::Answers, SimNetworkQuery::Missing,
                                       SimNetworkQuery::Hangs};
    scenario->networkQuery = queries[qMax(0, query)];
    ObjectReader commands = pc.object(QStringLiteral("commands"));
    for (const QString &name : commands.freeKeys())
        scenario->commands[name] = printing(commands.text(name, QString()));
}
