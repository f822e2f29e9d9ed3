#include "simpc/scenario_pc.h"

#include "simpc/sim_pc.h"

#include <QJsonArray>

#include <memory>

namespace {

using Tell = std::function<void(const QString &)>;

// A key of `pc` or of a moment.
struct PcKey
{
    KeyRow row; // `changes`: may be said of a moment
    bool ofBeginning = true;
    std::function<PcChanges(ObjectReader &reader)> read;
};

PcChange settingText(const QString &key, const QString &name, const QString &text)
{
    return [=](SimPc &pc, const Tell &) { pc.registry.setText(key, name, text); };
}

// What Windows keeps in the registry.
PcKey registryFact(const char *word, const QString &key, const char *name, const char *otherwise,
                   const char *meaning)
{
    const KeyRow row = keyRow<QString>(word, kinds::text(), otherwise, meaning);
    return {row, true, [row, key, name](ObjectReader &reader) -> PcChanges {
                return {settingText(key, name, reader.text(row.key, row.otherwise))};
            }};
}

PcKey registryTexts()
{
    const QString key = QStringLiteral("registry");
    return {
        {key, "object", "none", "further registry texts: key with its root → value name → text"},
        true,
        [key](ObjectReader &reader) {
            PcChanges changes;
            ObjectReader keys = reader.object(key);
            for (const QString &name : keys.freeKeys()) {
                ObjectReader values = keys.object(name);
                for (const QString &value : values.freeKeys())
                    changes.push_back(settingText(name, value, values.text(value, QString())));
            }
            return changes;
        }};
}

PcKey factKey(const AnyFact &fact)
{
    return {fact.row(), true, [&fact](ObjectReader &reader) -> PcChanges {
                if (!reader.has(fact.row().key))
                    return {};
                return {[change = fact.read(reader)](SimPc &pc, const Tell &tell) {
                    change.apply(pc.facts);
                    tell(change.event);
                }};
            }};
}

QString headsetText(const SimHeadset &headset)
{
    return headset.state == SimHeadset().state
               ? headset.serial
               : QStringLiteral("%1 (%2)").arg(headset.serial, headset.state);
}

KeyTable<SimHeadset> headsetKeys()
{
    KeyTable<SimHeadset> keys;
    keys.required("serial", &SimHeadset::serial, kinds::textNotEmpty())
        .key("state", &SimHeadset::state, kinds::text(), "the word that adb has for it");
    return keys;
}

ValueKind<SimUsb::Cable> cableKind()
{
    ValueKind<SimUsb::Cable> kind = kinds::objects<SimHeadset>(headsetKeys(), headsetText);
    kind.type = QStringLiteral("text, list of texts or of objects");
    kind.read = [objects = kind.read](ObjectReader &reader, const QString &key) {
        const QJsonValue value = reader.value(key);
        if (value.isArray() && value.toArray().first().isObject())
            return objects(reader, key);
        SimUsb::Cable cable;
        for (const QString &serial : reader.texts(key, {}))
            cable.push_back({serial});
        return cable;
    };
    return kind;
}

PcKey usbCable()
{
    const ValueKind<SimUsb::Cable> kind = cableKind();
    KeyRow row = keyRow<SimUsb::Cable>("usb", kind, {}, "headsets on the USB cable, their serials");
    row.changes = true;
    return {row, true, [kind, key = row.key](ObjectReader &reader) -> PcChanges {
                if (!reader.has(key))
                    return {};
                return {[cable = kind.read(reader, key), text = kind.text](SimPc &pc,
                                                                           const Tell &tell) {
                    pc.usb.setCable(cable);
                    tell(QStringLiteral("on the USB cable: ") + text(cable));
                }};
            }};
}

PcKey personChooses()
{
    const KeyRow row{"personChooses", kinds::oneOf({"usb", "wifi"}), "nothing",
                     "chosen in the window by the person in front of the PC", true};
    return {row, false, [key = row.key](ObjectReader &reader) -> PcChanges {
                if (!reader.has(key))
                    return {};
                const bool wired = reader.choice(key, {"usb", "wifi"}, 0) == 0;
                return {[wired](SimPc &pc, const Tell &tell) {
                    tell(wired ? QStringLiteral("the person chooses USB")
                               : QStringLiteral("the person chooses Wi-Fi"));
                    pc.modeChoice.tell(wired);
                }};
            }};
}

// A process of a scenario, and the TCP ports that it holds.
struct StartingProcess
{
    QString name;
    QString path;
    std::vector<quint16> ports;
};

KeyTable<StartingProcess> processKeys()
{
    const ValueKind<std::vector<quint16>> ports{
        QStringLiteral("list of whole numbers"),
        [](ObjectReader &reader, const QString &key) {
            std::vector<quint16> list;
            for (const qint64 port : reader.numbers(key, 1, 65535))
                list.push_back(static_cast<quint16>(port));
            return list;
        },
        [](const std::vector<quint16> &) { return QStringLiteral("none"); }};
    KeyTable<StartingProcess> keys;
    keys.required("name", &StartingProcess::name, kinds::textNotEmpty())
        .key("path", &StartingProcess::path, kinds::text(), "")
        .key("ports", &StartingProcess::ports, ports, "TCP ports that it holds");
    return keys;
}

PcChange starting(const StartingProcess &process)
{
    return [process](SimPc &pc, const Tell &tell) {
        const quint32 pid = pc.processes.start(process.name, process.path);
        for (const quint16 port : process.ports)
            pc.ports.open(pid, port);
        tell(process.name + QStringLiteral(" starts"));
    };
}

PcKey start()
{
    const KeyTable<StartingProcess> keys = processKeys();
    const KeyRow row{"start", "list of objects", "none",
                     "further processes: " + inlineText(keys.rows()), true};
    return {row, true, [keys, key = row.key](ObjectReader &reader) {
                PcChanges changes;
                for (const ObjectReader &entry : reader.objects(key))
                    changes.push_back(starting(keys.read(entry)));
                return changes;
            }};
}

PcKey end()
{
    KeyRow row = keyRow<QStringList>("end", kinds::texts(), {},
                                     "ends the processes of these names; of use in `at`");
    row.changes = true;
    return {row, true, [key = row.key](ObjectReader &reader) {
                PcChanges changes;
                for (const QString &name : reader.texts(key, {})) {
                    changes.push_back([name](SimPc &pc, const Tell &tell) {
                        pc.processes.endAll(name);
                        tell(name + QStringLiteral(" ends"));
                    });
                }
                return changes;
            }};
}

// In the order in which they are done.
std::vector<PcKey> makeKeys()
{
    const QString machine = QStringLiteral("HKEY_LOCAL_MACHINE\\");
    const QString software = machine + QStringLiteral("SOFTWARE\\Microsoft\\");
    std::vector<PcKey> keys{
        registryFact("os", software + "Windows NT\\CurrentVersion", "ProductName", "Windows 10 Pro",
                     "product name in the registry"),
        registryFact("machineGuid", software + "Cryptography", "MachineGuid",
                     "5f1c2a90-0000-4000-8000-51b0cafe0001", "machine identifier in the registry"),
        registryFact("cpu", machine + "HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0",
                     "ProcessorNameString", "Intel(R) Core(TM) i7-9700 CPU @ 3.00GHz",
                     "processor name in the registry"),
        registryTexts(),
    };
    static const SimFacts facts; // nobody's
    for (const AnyFact *fact : facts.all()) {
        if (!fact->row().key.isEmpty())
            keys.push_back(factKey(*fact));
    }
    for (const PcKey &key : {usbCable(), personChooses(), start(), end()})
        keys.push_back(key);
    return keys;
}

const std::vector<PcKey> &allKeys()
{
    static const std::vector<PcKey> keys = makeKeys();
    return keys;
}

PcChanges read(ObjectReader &reader, bool beginning)
{
    PcChanges changes;
    for (const PcKey &key : allKeys()) {
        if (beginning ? !key.ofBeginning : !key.row.changes)
            continue;
        const PcChanges these = key.read(reader);
        changes.insert(changes.end(), these.begin(), these.end());
    }
    return changes;
}

} // namespace

PcChanges scenario::readBeginning(ObjectReader pc)
{
    const PcChanges changes = read(pc, true);
    pc.done();
    return changes;
}

PcChanges scenario::readMoment(ObjectReader &moment)
{
    return read(moment, false);
}

KeyRows scenario::pcKeys()
{
    KeyRows rows;
    for (const PcKey &key : allKeys()) {
        if (key.ofBeginning)
            rows.push_back(key.row);
    }
    return rows;
}

KeyRows scenario::momentKeys()
{
    KeyRows rows;
    for (const PcKey &key : allKeys()) {
        if (!key.ofBeginning)
            rows.push_back(key.row);
    }
    return rows;
}
