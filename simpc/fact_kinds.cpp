#include "simpc/fact_kinds.h"

#include "simpc/key_table.h"

namespace {

using display_drivers::Device;
using display_drivers::Driver;
using graphics_adapters::Adapter;

constexpr qint64 gibibyte = 1LL << 30;
constexpr int versionFields = 4;

ValueKind<quint64> driverVersion()
{
    const auto read = [](ObjectReader &reader, const QString &key) {
        const QStringList fields = reader.text(key, QString()).split('.');
        quint64 version = 0;
        bool good = fields.size() == versionFields;
        for (const QString &field : fields) {
            bool ok = false;
            version = version << 16 | field.toUShort(&ok);
            good = good && ok;
        }
        if (!good)
            reader.fail(key,
                        QStringLiteral("must be four numbers up to 65535, like \"31.0.15.5176\""));
        return version;
    };
    const auto text = [](const quint64 &version) {
        QStringList fields;
        for (int field = 0; field < versionFields; ++field)
            fields.prepend(QString::number(version >> 16 * field & 0xffff));
        return fields.join('.');
    };
    return {QStringLiteral("text of four numbers"), read, text};
}

// A shell script that prints the text.
QByteArray printing(const QString &text)
{
    QString quoted = text;
    quoted.replace('\'', QStringLiteral("'\\''"));
    return "printf %s '" + quoted.toUtf8() + '\'';
}

} // namespace

answers::Adapters usual::adapters()
{
    return {{0x10de, 0x2503, QStringLiteral("NVIDIA GeForce RTX 3060"), 12 * gibibyte - 1}};
}

answers::DisplayDevices usual::displayDevices()
{
    return {{{true, {{QStringLiteral("NVIDIA"), 0x0020'0000'000f'19ec}}}}}; // 32.0.15.6636
}

answers::WaveOuts usual::waveOuts()
{
    return {{2, QStringLiteral("Speakers")}};
}

ValueKind<answers::Adapters> kinds::adapters()
{
    const Words<quint32> vendors = {
        {"nvidia", 0x10de}, {"amd", 0x1002}, {"intel", 0x8086}, {"microsoft", 0x1414}};
    KeyTable<Adapter> keys({0x10de, 1, QString(), 0});
    keys.required("name", &Adapter::name, textNotEmpty())
        .key("vendor", &Adapter::vendorId, word(vendors), "")
        .key("device", &Adapter::deviceId, wholeNumber<quint32>(),
             "`microsoft` with 140 is the basic render driver")
        .key("memoryBytes", &Adapter::dedicatedMemory, wholeNumber<quint64>(), "");
    return objects<Adapter>(keys, [](const Adapter &adapter) { return adapter.name; });
}

// One device with the drivers that the scenario lists.
ValueKind<answers::DisplayDevices> kinds::displayDevices()
{
    KeyTable<Driver> keys({QStringLiteral("NVIDIA"), 0});
    keys.key("manufacturer", &Driver::manufacturer, kinds::text(), "")
        .required("version", &Driver::version, driverVersion());
    const auto drivers = objects<Driver>(keys, [](const Driver &driver) {
        return driver.manufacturer + ' ' + driverVersion().text(driver.version);
    });
    return {drivers.type,
            [drivers](ObjectReader &reader, const QString &key) -> answers::DisplayDevices {
                return {{Device{true, drivers.read(reader, key)}}};
            },
            [drivers](const answers::DisplayDevices &devices) {
                QStringList texts;
                for (const Device &device : devices.value_or(std::vector<Device>()))
                    texts.append(drivers.text(device.drivers));
                return listText(texts);
            },
            drivers.details};
}

ValueKind<answers::Direct3D> kinds::direct3D()
{
    const Words<answers::Direct3D> words = {
        {"11.0", {0, 0xb000}},      {"10.1", {0, 0xa100}},
        {"10.0", {0, 0xa000}},      {"9.3", {0, 0x9300}},
        {"9.1", {0, 0x9100}},       {"level 11 unknown", {feature_level::invalidArgument, 0}},
        {"fails", {0x887a0004, 0}},
    };
    return word(words, [](const answers::Direct3D &a, const answers::Direct3D &b) {
        return a.result == b.result && a.level == b.level;
    });
}

ValueKind<SimNetworkQuery> kinds::networkQuery()
{
    return word<SimNetworkQuery>({{"answers", SimNetworkQuery::Answers},
                                  {"missing", SimNetworkQuery::Missing},
                                  {"hangs", SimNetworkQuery::Hangs}});
}

ValueKind<SimCommands> kinds::commands()
{
    return {QStringLiteral("object"),
            [](ObjectReader &reader, const QString &key) {
                SimCommands commands;
                ObjectReader entries = reader.object(key);
                for (const QString &name : entries.freeKeys())
                    commands[name] = printing(entries.text(name, QString()));
                return commands;
            },
            [](const SimCommands &commands) { return listText(commands.keys()); }};
}

ValueKind<answers::TcpTable> kinds::tcpTable()
{
    constexpr quint32 accessDenied = 5;
    return word<answers::TcpTable>({{"answers", {}},
                                    {"no memory", {answers::TcpTable::NoMemory, 0, {}}},
                                    {"fails", {answers::TcpTable::NotAnswered, accessDenied, {}}}},
                                   [](const answers::TcpTable &a, const answers::TcpTable &b) {
                                       return a.failure == b.failure;
                                   });
}

ValueKind<answers::AcLine> kinds::acLine()
{
    return word<answers::AcLine>({{"online", power::AcLine::Online},
                                  {"offline", power::AcLine::Offline},
                                  {"unknown", power::AcLine::Unknown},
                                  {"fails", std::nullopt}});
}

ValueKind<answers::WaveOuts> kinds::waveOuts()
{
    using audio_devices::WaveOut;
    KeyTable<WaveOut> keys({2, QString()});
    keys.key("name", &WaveOut::name, kinds::text(), "")
        .key("channels", &WaveOut::channels, wholeNumber<int>(), "");
    return objects<WaveOut>(keys, [](const WaveOut &device) {
        return QStringLiteral("%1 (%2 channels)").arg(device.name).arg(device.channels);
    });
}
