#include "checks/assessment.h"
#include "checks/table.h"
#include "tests/support/test_case.h"

#include <QDir>

#include <functional>

using namespace checks;
using namespace std::chrono_literals;
using std::chrono::milliseconds;

// What is different from a PC of which nothing is known.
using Change = std::function<void(Facts &)>;
Q_DECLARE_METATYPE(Change)

namespace {

constexpr milliseconds longEnough = 24h;

// Whatever the table says of these facts when they have been so for long, as
// "id: evidence".
QStringList said(const Facts &facts)
{
    const Assessment before = assess(table(), facts, {}, 0ms);
    const Assessment now = assess(table(), facts, before.heldSince, longEnough);
    QStringList result;
    for (const Finding &finding : now.findings) {
        QStringList values;
        for (const Evidence &fact : finding.evidence)
            values.append(fact.value);
        const QString id = QString::fromLatin1(finding.check->id);
        result.append(values.isEmpty() ? id : id + ": " + values.join("; "));
    }
    return result;
}

void row(const char *name, const QStringList &shown, const Change &change)
{
    QTest::newRow(name) << change << shown;
}

const Check *find(const char *id)
{
    for (const Check &check : table()) {
        if (QLatin1String(check.id) == QLatin1String(id))
            return &check;
    }
    return nullptr;
}

} // namespace

class TestTable : public TestCase
{
    Q_OBJECT

private slots:
    // For each check what it finds, and beside it what looks alike and is none.
    void factsAndWhatIsSaidOfThem_data()
    {
        QTest::addColumn<Change>("change");
        QTest::addColumn<QStringList>("shown");
        row("nothing is known", {}, [](Facts &) {});
        steamRows();
        hardwareRows();
        networkRows();
        usbRows();
        powerAndSoundRows();
    }
    void factsAndWhatIsSaidOfThem()
    {
        QFETCH(Change, change);
        Facts facts;
        change(facts);
        QTEST(said(facts), "shown");
    }

    void theTableHoldsTogether()
    {
        QVERIFY(!table().empty());
        QStringList before;
        for (const Check &check : table()) {
            QVERIFY2(!before.contains(check.id), check.id);
            for (const char *cause : check.causes)
                QVERIFY2(before.contains(cause), qPrintable(QString(check.id) + " <- " + cause));
            before.append(check.id);
            QVERIFY2(check.find, check.id);
            QVERIFY2(*check.title && *check.text, check.id);
            // A button has a label, and nothing else has one.
            QVERIFY2((check.action.kind != Action::None) == (*check.action.label != 0), check.id);
            QVERIFY2(!check.question || check.question->ask, check.id);
        }
    }

    void nothingIsFoundWithoutFacts()
    {
        for (const Check &check : table())
            QVERIFY2(!check.find(Facts()), check.id);
    }

    // Steam comes with the program, and SteamVR with Steam.
    void whatIsOnlyStartingBothersNobody()
    {
        for (const char *id : {"steam-stopped", "steamvr-stopped"})
            QVERIFY2(find(id)->hold == 30s, id);
    }

    // Nobody puts another card into a PC that runs, and drivers take long to list.
    void thePcIsNotAskedAboutItsPartsWithEveryPoll()
    {
        for (const char *id : {"system-too-old", "hardware-too-weak", "driver-too-old"}) {
            QVERIFY2(find(id)->question, id);
            QVERIFY2(find(id)->question->again == 60s, id);
        }
    }

    // They have a dialog, a toast or a place on a card; a second one would be one
    // too many.
    void whatIsShownElsewhereIsNoCard()
    {
        for (const char *id :
             {"system-too-old", "hardware-too-weak", "driver-too-old", "steam-missing",
              "steam-stopped", "steamvr-stopped", "ports-taken", "public-network",
              "no-headset-on-cable", "on-battery", "no-stereo-output"})
            QVERIFY2(find(id) && find(id)->surface == Surface::Own, id);
    }

private:
    static void steamRows()
    {
        row("no Steam", {"steam-missing"}, [](Facts &facts) {
            facts.steamInstalled = false;
            facts.steamRunning = false;
            facts.steamVRRunning = false;
        });
        row("a Steam that nobody installed runs", {}, [](Facts &facts) {
            facts.steamInstalled = false;
            facts.steamRunning = true;
            facts.steamVRRunning = true;
        });
        row("Steam does not run", {"steam-stopped"}, [](Facts &facts) {
            facts.steamInstalled = true;
            facts.steamRunning = false;
            facts.steamVRRunning = false;
        });
        row("SteamVR does not run", {"steamvr-stopped"}, [](Facts &facts) {
            facts.steamInstalled = true;
            facts.steamRunning = true;
            facts.steamVRRunning = false;
        });
        row("both run", {}, [](Facts &facts) {
            facts.steamInstalled = true;
            facts.steamRunning = true;
            facts.steamVRRunning = true;
        });
        row("nobody looked yet", {}, [](Facts &facts) { facts.steamInstalled = true; });
        launchRows();
    }

    // A launch of Steam that failed, and a Steam that runs or does not.
    static Change steamFailed(unsigned error, bool runs)
    {
        return [=](Facts &facts) {
            facts.steamInstalled = true;
            facts.steamRunning = runs;
            facts.steamFailure = LaunchFailure{"D:/a/steam.exe", error, "no %1 such."};
        };
    }
    static Change stopFailed(unsigned error)
    {
        return [=](Facts &facts) {
            facts.steamVRStopFailure = LaunchFailure{"D:/b/vrstartup.exe", error, "not %2 here."};
        };
    }

    static void launchRows()
    {
        const QString steam =
            "D:" + QString(QDir::separator()) + "a" + QDir::separator() + "steam.exe; no %1 such.";
        const QString stop = "D:" + QString(QDir::separator()) + "b" + QDir::separator() +
                             "vrstartup.exe; not %2 here.";
        row("Steam's file is gone", {"steam-file-missing: " + steam}, steamFailed(2, false));
        row("Steam's folder is gone", {"steam-file-missing: " + steam}, steamFailed(3, false));
        row("Steam is no program", {"steam-not-startable: " + steam}, steamFailed(193, false));
        row("it failed, and the user started Steam", {}, steamFailed(2, true));
        row("Steam was no program, and runs", {}, steamFailed(193, true));
        row("SteamVR's tool is gone", {"steamvr-stop-file-missing: " + stop}, stopFailed(2));
        row("SteamVR's folder is gone", {"steamvr-stop-file-missing: " + stop}, stopFailed(3));
        row("SteamVR's tool is no program", {"steamvr-not-stoppable: " + stop}, stopFailed(193));
    }

    static void hardwareRows()
    {
        row("Windows 8.1", {"system-too-old: 8.1"}, [](Facts &facts) {
            facts.systemVersion = "8.1";
            facts.hardwareScore = 0;
            facts.nvidiaDrivers = QStringList{"31.0.15.3741"};
        });
        row("Windows 10", {}, [](Facts &facts) { facts.systemVersion = "10"; });
        row("weak hardware", {"hardware-too-weak: Celeron; GeForce GT 710"}, [](Facts &facts) {
            facts.cpuName = "Celeron";
            facts.gpuName = "GeForce GT 710";
            facts.hardwareScore = 7;
            facts.nvidiaDrivers = QStringList{"31.0.15.3741"};
        });
        row("hardware that is just enough", {}, [](Facts &facts) { facts.hardwareScore = 8; });
        row("old drivers", {"driver-too-old: 31.0.15.3741, 30.0.14.9649"}, [](Facts &facts) {
            facts.hardwareScore = 12;
            facts.nvidiaDrivers = QStringList{"31.0.15.3741", "30.0.14.9649"};
        });
        row("the first good driver", {},
            [](Facts &facts) { facts.nvidiaDrivers = QStringList{"31.0.15.5176"}; });
        row("an old driver beside a good one", {}, [](Facts &facts) {
            facts.nvidiaDrivers = QStringList{"31.0.15.3741", "31.0.15.5176"};
        });
        row("no driver of NVIDIA", {}, [](Facts &facts) { facts.nvidiaDrivers = QStringList(); });
    }

    static void networkRows()
    {
        row("a public Wi-Fi", {"public-network"}, [](Facts &facts) {
            facts.wired = false;
            facts.networkCategory = "Public";
        });
        row("a public network, and the cable", {}, [](Facts &facts) {
            facts.wired = true;
            facts.networkCategory = "Public";
        });
        row("a private network", {}, [](Facts &facts) {
            facts.wired = false;
            facts.networkCategory = "Private";
        });
        row("no network", {}, [](Facts &facts) {
            facts.wired = false;
            facts.networkCategory = QString();
        });
        const auto port = [](bool listening, bool held) {
            return [=](Facts &facts) {
                facts.controlPort = ControlPort();
                facts.controlPort->listening = listening;
                facts.controlPort->error = listening ? 0 : 10013;
                if (held)
                    facts.controlPort->holder = ControlPort::Holder{7, "other.exe"};
            };
        };
        row("our port is ours", {}, port(true, false));
        row("another program has our port as well", {"control-port-taken: other.exe"},
            port(true, true));
        row("another program has our port alone", {"control-port-taken: other.exe"},
            port(false, true));
        row("Windows keeps our port", {"control-port-unusable: 10013"}, port(false, false));
        row("nothing is missing", {}, [](Facts &facts) { facts.missingThreads.clear(); });
        row("no thread for two of ours", {"no-threads: facts, proxies"}, [](Facts &facts) {
            facts.missingThreads = QStringList{"facts", "proxies"};
        });
        row("no thread explains the port that is not listened on", {"no-threads: the link"},
            [=](Facts &facts) {
                port(false, false)(facts);
                facts.missingThreads = QStringList("the link");
            });
        row("another program has our port, and the server came to us", {}, [=](Facts &facts) {
            port(true, true)(facts);
            facts.reached = static_cast<int>(Stage::Server) + 1;
        });
        row("ports in other hands", {"ports-taken: node.exe, nginx.exe"}, [](Facts &facts) {
            facts.portHolders = QStringList{"node.exe", "nginx.exe"};
        });
        row("free ports", {}, [](Facts &facts) { facts.portHolders = QStringList(); });
    }

    static void usbRows()
    {
        const auto adbReports = [](bool wired, const QString &serial) {
            return [=](Facts &facts) {
                facts.wired = wired;
                facts.adb = adb_rules::AdbState();
                facts.adb->serial = serial;
            };
        };
        row("nothing on the cable", {"no-headset-on-cable"}, adbReports(true, ""));
        row("a headset on the cable", {}, adbReports(true, "PA7910"));
        row("nothing on the cable, and Wi-Fi", {}, adbReports(false, ""));
        row("adb has not answered yet", {}, adbReports(true, adb_rules::AdbState().serial));
    }

    static void powerAndSoundRows()
    {
        row("on battery", {"on-battery"},
            [](Facts &facts) { facts.power = power::AcLine::Offline; });
        row("a power line that says nothing", {"on-battery"},
            [](Facts &facts) { facts.power = power::AcLine::Unknown; });
        row("on mains", {}, [](Facts &facts) { facts.power = power::AcLine::Online; });
        row("no stereo output", {"no-stereo-output"},
            [](Facts &facts) { facts.stereoOutput = false; });
        row("stereo", {}, [](Facts &facts) { facts.stereoOutput = true; });
    }
};

KOLM_TEST_MAIN(TestTable)
#include "tst_table.moc"
