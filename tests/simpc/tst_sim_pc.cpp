#include "base/manual_clock.h"
#include "simpc/sim_pc.h"
#include "tests/support/test_case.h"

class SimPcTest : public TestCase
{
    Q_OBJECT

private slots:
    void theNewestPcIsTheCurrentOneUntilItGoes()
    {
        ManualClock clock;
        QVERIFY(!SimPc::exists());
        {
            SimPc pc(clock);
            QVERIFY(SimPc::exists());
            QCOMPARE(&SimPc::current(), &pc);
            QCOMPARE(&pc.timeline.clock(), static_cast<Clock *>(&clock));
        }
        QVERIFY(!SimPc::exists());
    }

    void aRegistryTextIsFoundUnderItsKeyAndNameOnly()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.registry.setText("HKEY_LOCAL_MACHINE\\A\\B", "Name", "text");
        QCOMPARE(pc.registry.text("HKEY_LOCAL_MACHINE\\A\\B", "Name").value_or("-"),
                 QString("text"));
        QVERIFY(!pc.registry.text("HKEY_LOCAL_MACHINE\\A\\B", "Other"));
        QVERIFY(!pc.registry.text("HKEY_LOCAL_MACHINE\\A", "Name"));
    }

    void aKeyExistsWhenItOrSomethingBelowItWasSet()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.registry.addKey("H\\A\\B");
        QVERIFY(pc.registry.keyExists("H\\A\\B"));
        QVERIFY(pc.registry.keyExists("H\\A"));
        QVERIFY(!pc.registry.keyExists("H\\A\\B\\C"));
        QVERIFY(!pc.registry.keyExists("H\\A\\BB"));
        QVERIFY(!pc.registry.keyExists("H\\A\\"));
    }

    void subkeysAreTheDirectOnesOnceEach()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.registry.addKey("H\\U\\Steam\\Deep");
        pc.registry.setText("H\\U\\Steam", "DisplayName", "Steam");
        pc.registry.addKey("H\\U\\Editor");
        pc.registry.addKey("H\\Uninvited\\Other");
        QCOMPARE(pc.registry.subkeys("H\\U"), QStringList({"Editor", "Steam"}));
        QCOMPARE(pc.registry.subkeys("H\\U\\Editor"), QStringList());
    }

    void removingAKeyRemovesWhatIsBelowAndNothingBeside()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.registry.addKey("H\\Steam");
        pc.registry.addKey("H\\Steam\\Apps");
        pc.registry.addKey("H\\Steam2");
        pc.registry.removeKey("H\\Steam");
        QCOMPARE(pc.registry.subkeys("H"), QStringList({"Steam2"}));
    }

    void processesKeepTheirOrderAndHaveDifferentPids()
    {
        ManualClock clock;
        SimPc pc(clock);
        const quint32 first = pc.processes.start("b.exe", "C:\\b.exe");
        const quint32 second = pc.processes.start("a.exe");
        QVERIFY(first != second);
        const std::vector<processes::Entry> all = pc.processes.list();
        QCOMPARE(all.size(), size_t(2));
        QCOMPARE(all[0].name, QString("b.exe"));
        QCOMPARE(pc.processes.modulePath(first), QString("C:\\b.exe"));
        QCOMPARE(all[0].pid, first);
        QCOMPARE(all[1].pid, second);
        pc.processes.end(first);
        QVERIFY(!pc.processes.isRunning("b.exe"));
        QVERIFY(pc.processes.isRunning("a.exe"));
    }

    void endingByNameEndsAllOfThatNameInThatLetterCase()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.processes.start("adb.exe");
        pc.processes.start("Adb.exe");
        pc.processes.start("adb.exe");
        pc.processes.endAll("adb.exe");
        QCOMPARE(pc.processes.list().size(), size_t(1));
        QVERIFY(pc.processes.isRunning("Adb.exe"));
    }

    void whoeverEndsAProcessTheListenerHearsOfIt()
    {
        ManualClock clock;
        SimPc pc(clock);
        QStringList ended;
        pc.processes.onEnded([&](const processes::Entry &process) {
            // It is gone by then.
            ended.append(process.name +
                         (pc.processes.isRunning(process.name) ? " still" : " gone"));
        });
        const quint32 pid = pc.processes.start("a.exe");
        pc.processes.start("b.exe");
        pc.processes.end(pid);
        pc.processes.end(pid);
        pc.timeline.after(5, [&] { pc.processes.endAll("b.exe"); });
        clock.advance(5);
        QVERIFY(!pc.processes.isRunning("b.exe"));
        QCOMPARE(ended, QStringList({"a.exe gone", "b.exe gone"}));
    }

    void aProgramNobodyKnowsCannotBeLaunched()
    {
        ManualClock clock;
        SimPc pc(clock);
        const SimLaunchResult result = pc.launches.start({"C:\\none.exe", "-x", false});
        QVERIFY(!result.started);
        QVERIFY(!result.hasHandle);
        QCOMPARE(result.error, 2u);
        QCOMPARE(pc.journal.lines(), QStringList({"launch C:\\none.exe -x"}));
    }

    void aLaunchIsHandledByTheLastPartOfThePath_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<bool>("handled");
        QTest::newRow("backslashes") << "C:\\Steam\\steam.exe" << true;
        QTest::newRow("slashes") << "C:/Steam/steam.exe" << true;
        QTest::newRow("mixed") << "C:/Steam\\steam.exe" << true;
        QTest::newRow("no folder") << "steam.exe" << true;
        QTest::newRow("another letter case") << "C:\\Steam\\STEAM.EXE" << true;
        QTest::newRow("no suffix") << "C:\\Steam\\steam" << false;
        QTest::newRow("part of a name") << "C:\\notsteam.exe" << false;
    }
    void aLaunchIsHandledByTheLastPartOfThePath()
    {
        QFETCH(QString, program);
        QFETCH(bool, handled);
        ManualClock clock;
        SimPc pc(clock);
        QStringList seen;
        pc.launches.on("Steam.exe", [&](const SimLaunch &request) {
            seen.append(request.program + '|' + request.parameters + '|' +
                        QString::number(request.hidden));
            return SimLaunchResult{true, 0, true, 700};
        });
        const SimLaunchResult result = pc.launches.start({program, "-silent", true});
        QCOMPARE(result.started, handled);
        QCOMPARE(seen, handled ? QStringList({program + "|-silent|1"}) : QStringList());
        QCOMPARE(pc.journal.lines(), QStringList({"launch " + program + " -silent (hidden)"}));
        if (handled)
            QCOMPARE(result.endsAfter, 700);
    }

    void theJournalHoldsTheProgramsDeedsOnly()
    {
        ManualClock clock;
        SimPc pc(clock);
        QStringList heard;
        pc.journal.onLine([&](const QString &line) { heard.append(line); });
        pc.journal.add("cell write 0");
        pc.facts.acLine.set(power::AcLine::Offline);
        pc.processes.start("steam.exe");
        pc.events.add("Steam appears");
        QCOMPARE(pc.journal.lines(), QStringList({"cell write 0"}));
        QCOMPARE(heard, pc.journal.lines());
        pc.journal.clear();
        QCOMPARE(pc.journal.lines(), QStringList());
    }

    void happeningsHaveAListOfTheirOwn()
    {
        ManualClock clock;
        SimPc pc(clock);
        QStringList heard;
        pc.events.onLine([&](const QString &line) { heard.append(line); });
        int alsoHeard = 0;
        pc.events.onLine([&](const QString &) { ++alsoHeard; });
        pc.timeline.after(10, [&] { pc.events.add("something"); });
        QCOMPARE(pc.events.lines(), QStringList());
        clock.advance(10);
        QCOMPARE(pc.events.lines(), QStringList({"something"}));
        QCOMPARE(heard, pc.events.lines());
        QCOMPARE(alsoHeard, 1);
        QCOMPARE(pc.journal.lines(), QStringList());
    }

    void aFailingPowerQuestionHasNoAnswer()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.acLine.set(std::nullopt);
        QVERIFY(!pc.facts.acLine.get());
    }

    void everyHeadsetThatComesOrGoesIsToldOf()
    {
        ManualClock clock;
        SimPc pc(clock);
        QStringList told;
        pc.usb.onCable([&told](const std::vector<SimHeadset> &cable) {
            told << QString("cable of %1").arg(cable.size());
        });
        pc.usb.onInterfaceChange([&told](const QString &path) { told << path.section('#', 1, 2); });
        pc.usb.setCable({{"A"}, {"B"}});
        pc.usb.setCable({{"B"}, {"C"}});
        pc.usb.setCable({{"B", "offline"}, {"C"}}); // the same plugs
        pc.usb.onInterfaceChange({});
        pc.usb.setCable({});
        const QString identity = "VID_05C6&PID_903A#";
        QCOMPARE(told, (QStringList{"cable of 0", "cable of 2", identity + "A", identity + "B",
                                    "cable of 2", identity + "A", identity + "C", "cable of 2",
                                    "cable of 0"}));
    }

    void processesOfTheRealMachineCountAndCanBeEnded()
    {
        ManualClock clock;
        SimPc pc(clock);
        std::vector<processes::Entry> real = {{9000, "adb.exe"}};
        pc.processes.setHostProcesses({[&real] { return real; },
                                       [](quint32 pid) { return QString("/opt/adb-%1").arg(pid); },
                                       [&real](quint32 pid) {
                                           if (!real.empty() && real[0].pid == pid)
                                               real.clear();
                                       }});
        const quint32 own = pc.processes.start("steam.exe");
        QCOMPARE(pc.processes.list().size(), size_t(2));
        QCOMPARE(pc.processes.modulePath(pc.processes.list()[1].pid), QString("/opt/adb-9000"));
        pc.processes.end(own);
        QVERIFY(pc.processes.isRunning("adb.exe"));
        pc.processes.end(9000);
        QVERIFY(!pc.processes.isRunning("adb.exe"));
    }
};

KOLM_TEST_MAIN(SimPcTest)
#include "tst_sim_pc.moc"
