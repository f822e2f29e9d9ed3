#include "simpc/scenario_programs.h"

namespace {

constexpr int headsetPort = 9943; // of this PC, and of the headset

KeyTable<SteamOptions> makeSteamKeys()
{
    using S = SteamOptions;
    KeyTable<S> keys;
    keys.key("installed", &S::steamInstalled, kinds::flag(), "")
        .key("running", &S::steamRunning, kinds::flag(), "whether it runs at the beginning")
        .key("path", &S::steamPath, kinds::text(), "its folder")
        .key("listed", &S::steamListed, kinds::flag(),
             "whether Windows lists it among the installed programs")
        .key("appearsAfter", &S::steamAppears, kinds::time(),
             "from the launch until `steam.exe` is seen")
        .key("launcherEndsAfter", &S::launcherEnds, kinds::timeOrNever(),
             "from the launch until the launched process ends")
        .check([](ObjectReader &reader, S *steam) {
            if (steam->steamRunning && !steam->steamInstalled)
                reader.fail(QStringLiteral("running"),
                            QStringLiteral("needs Steam to be installed"));
        });
    return keys;
}

KeyTable<SteamOptions> makeSteamVrKeys()
{
    using S = SteamOptions;
    KeyTable<S> keys;
    keys.key("installed", &S::steamVrInstalled, kinds::flag(), "")
        .key("running", &S::steamVrRunning, kinds::flag(),
             "whether its processes are left over at the beginning")
        .key("path", &S::steamVrPath, kinds::text(), "its folder")
        .key("appearsAfter", &S::steamVrAppears, kinds::time(),
             "from the Steam URL until the first process")
        .key("processGap", &S::steamVrGap, kinds::time(),
             "between one process and the next, coming up")
        .key("driverLoadsAfter", &S::driverLoads, kinds::time(),
             "from `vrserver.exe` until the streaming server")
        .key("closesAfter", &S::steamVrCloses, kinds::time(),
             "from the shutdown until the first process goes")
        .key("closingGap", &S::closingGap, kinds::time(), "between one process and the next, going")
        .check([](ObjectReader &reader, S *steam) {
            if (steam->steamVrRunning && !steam->steamVrInstalled)
                reader.fail(QStringLiteral("running"),
                            QStringLiteral("needs SteamVR to be installed"));
        });
    return keys;
}

void checkHeadset(ObjectReader &reader, PlannedHeadset *headset)
{
    const int drops = headset->drops;
    if (drops >= 0 && drops <= headset->joins)
        reader.fail(QStringLiteral("dropsAt"), QStringLiteral("must be later than \"joinsAt\""));
    if (headset->returns >= 0 && (drops < 0 || headset->returns <= drops))
        reader.fail(QStringLiteral("returnsAt"),
                    QStringLiteral("must be later than a \"dropsAt\""));
}

KeyTable<PlannedHeadset> makeHeadsetKeys()
{
    using H = PlannedHeadset;
    KeyTable<H> keys;
    keys.required("serial", &H::serial, kinds::textNotEmpty())
        .required("address", &H::address, kinds::textNotEmpty())
        .key("joinsAt", &H::joins, kinds::time(), "when it comes into the network")
        .key("dropsAt", &H::drops, kinds::time(), "when it leaves it")
        .key("returnsAt", &H::returns, kinds::time(), "when it is back")
        .check(checkHeadset);
    return keys;
}

KeyTable<ServerPlan> makeServerKeys()
{
    using P = ServerPlan;
    P usual;
    usual.headsets = {{QStringLiteral("D3SIM00001"), QStringLiteral("192.168.1.31")}};
    ValueKind<std::vector<PlannedHeadset>> headsets =
        kinds::objects<PlannedHeadset>(scenario::headsetKeys(), [](const PlannedHeadset &headset) {
            return QStringLiteral("%1 at %2").arg(headset.serial, headset.address);
        });
    headsets.details.clear(); // they have a table of their own
    const auto readUsb = [](ObjectReader &reader, P *plan) {
        const QString key = QStringLiteral("usb");
        if (reader.value(key).toString() == QLatin1String("adb"))
            plan->usbPort = headsetPort;
        else
            plan->usb = reader.flag(key, plan->usb);
    };
    KeyTable<P> keys(usual);
    keys.key("headsets", &P::headsets, headsets, "in its network, below")
        .key("linkDelay", &P::linkDelay, kinds::time(),
             "from the assistant's request until the headset is connected")
        .key("restartAt", &P::restart, kinds::time(), "asks for a restart of SteamVR")
        .key({"usb", "flag or `adb`", "false",
              "a headset is on the cable; `adb`: while it is reached through port 9943 of the PC"},
             readUsb)
        .key("hello", &P::hello, kinds::flag(), "greets on every connection")
        .key("serialFirst", &P::deviceIdFirst, kinds::flag(),
             "reports the current headset before the list, not after it")
        .key("deviceId", &P::deviceId, kinds::text(),
             "reported as the current headset, instead of the connected one")
        .key("split", &P::split, kinds::wholeNumber<int>(1), "sends in pieces of so many bytes")
        .key("join", &P::join, kinds::wholeNumber<int>(1), "sends so many replies at once");
    return keys;
}

KeyTable<AdbPlan> makeAdbKeys()
{
    using P = AdbPlan;
    KeyTable<P> keys;
    keys.key("onPath", &P::onPath, kinds::flag(), "it is found on the search path")
        .key("hangs", &P::hangs, kinds::flag(), "no call ever ends")
        .key("runsFrom", &P::runsFrom, kinds::text(),
             "a server runs already, from an `adb.exe` in a folder of this name");
    return keys;
}

} // namespace

const KeyTable<SteamOptions> &scenario::steamKeys()
{
    static const KeyTable<SteamOptions> keys = makeSteamKeys();
    return keys;
}

const KeyTable<SteamOptions> &scenario::steamVrKeys()
{
    static const KeyTable<SteamOptions> keys = makeSteamVrKeys();
    return keys;
}

const KeyTable<ServerPlan> &scenario::serverKeys()
{
    static const KeyTable<ServerPlan> keys = makeServerKeys();
    return keys;
}

const KeyTable<PlannedHeadset> &scenario::headsetKeys()
{
    static const KeyTable<PlannedHeadset> keys = makeHeadsetKeys();
    return keys;
}

const KeyTable<AdbPlan> &scenario::adbKeys()
{
    static const KeyTable<AdbPlan> keys = makeAdbKeys();
    return keys;
}

ServerPlan scenario::readServer(ObjectReader &root, const QString &key)
{
    if (root.value(key).isObject())
        return serverKeys().read(root.object(key));
    const ServerPlan::Kind kinds[] = {ServerPlan::Program, ServerPlan::External, ServerPlan::Never};
    const int word = root.choice(key, {"sim", "external", "never"}, 0);
    ServerPlan plan = serverKeys().prototype();
    plan.kind = kinds[qMax(0, word)];
    return plan;
}

AdbPlan scenario::readAdb(ObjectReader &root, const QString &key)
{
    if (root.value(key).isObject())
        return adbKeys().read(root.object(key));
    AdbPlan plan;
    plan.onPath = root.choice(key, {"sim", "none"}, 0) == 0;
    return plan;
}
