#include "base/manual_clock.h"
#include "simpc/sim_pc.h"
#include "sysinfo/system_info.h"
#include "tests/support/test_case.h"

// Where sound goes, and the virtual cable.
class TestSoundDevices : public TestCase
{
    Q_OBJECT

private slots:
    void theFirstWaveOutDeviceDecides_data()
    {
        QTest::addColumn<QVector<int>>("channels");
        QTest::addColumn<bool>("supported");
        QTest::newRow("stereo") << QVector<int>{2} << true;
        QTest::newRow("none") << QVector<int>{} << false;
        QTest::newRow("mono first, stereo second") << QVector<int>{1, 2} << false;
        QTest::newRow("5.1 first, stereo second") << QVector<int>{6, 2} << false;
        QTest::newRow("stereo first, 5.1 second") << QVector<int>{2, 6} << true;
    }

    void theFirstWaveOutDeviceDecides()
    {
        QFETCH(QVector<int>, channels);
        QFETCH(bool, supported);
        ManualClock clock;
        SimPc pc(clock);
        answers::WaveOuts devices;
        for (int count : channels)
            devices.push_back({count, "Speakers"});
        pc.facts.waveOuts.set(devices);
        SystemInfo info;
        QCOMPARE(info.isAudioOutputSupported(), supported);
    }

    void stereoOnceIsStereoForGood()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.waveOuts.set({{6, "Cinema"}});
        SystemInfo info;
        QVERIFY(!info.isAudioOutputSupported());
        pc.facts.waveOuts.set({{2, "Headphones"}});
        QVERIFY(info.isAudioOutputSupported());
        QCOMPARE(loggedCount("audio supoort :6Cinema"), 1);
        QCOMPARE(loggedCount("audio supoort :2Headphones"), 1);
        pc.facts.waveOuts.set({});
        QVERIFY(info.isAudioOutputSupported());
    }

    void theVirtualCableIsKnownByItsExactName_data()
    {
        QTest::addColumn<QStringList>("devices");
        QTest::addColumn<bool>("present");
        const QString cable = "CABLE Output (VB-Audio Virtual Cable)";
        QTest::newRow("there") << QStringList{"Microphone", cable} << true;
        QTest::newRow("no device") << QStringList{} << false;
        QTest::newRow("a second cable only")
            << QStringList{"CABLE Output (2- VB-Audio Virtual Cable)"} << false;
        QTest::newRow("other letter case") << QStringList{cable.toLower()} << false;
        QTest::newRow("behind a name that cannot be read")
            << QStringList{QString(QChar::ReplacementCharacter) + "x", QString(), cable} << true;
    }

    void theVirtualCableIsKnownByItsExactName()
    {
        QFETCH(QStringList, devices);
        QFETCH(bool, present);
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.recordingDevices.set(devices);
        QCOMPARE(SystemInfo::hasVirtualCable(), present);
    }

    void devicesOfOneNameAreLoggedOnce()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.recordingDevices.set({"Microphone", "Microphone", "Line In"});
        QVERIFY(!SystemInfo::hasVirtualCable());
        QCOMPARE(logged(), QStringList{"(\"Microphone\", \"Line In\")"});
    }

    void theCablesInstallerIsStartedWithRightsAndNotWaitedFor_data()
    {
        QTest::addColumn<bool>("starts");
        QTest::addColumn<uint>("error");
        QTest::addColumn<QString>("result");
        QTest::newRow("started") << true << 0U << "42";
        QTest::newRow("refused by the user") << false << 5U << "5";
        QTest::newRow("missing") << false << 2U << "2";
    }

    void theCablesInstallerIsStartedWithRightsAndNotWaitedFor()
    {
        QFETCH(bool, starts);
        QFETCH(uint, error);
        QFETCH(QString, result);
        ManualClock clock;
        SimPc pc(clock);
        pc.launches.on("VBCABLE_Setup_x64.exe", [&](const SimLaunch &request) {
            [&] { QVERIFY(request.elevated && !request.hidden && request.parameters.isEmpty()); }();
            return SimLaunchResult{starts, error, true, -1};
        });
        SystemInfo::installVirtualCable("C:/星程 KOLM");
        QCOMPARE(pc.journal.lines(),
                 QStringList{"launch C:/星程 KOLM/installaudio/VBCABLE_Setup_x64.exe "
                             "(elevated) in C:/星程 KOLM"});
        QCOMPARE(logged(), QStringList({"C:/星程 KOLM", "install audio: signed by VB-Audio",
                                        "install audio res: " + result}));
        QCOMPARE(clock.slept(), qint64(0));
    }

    void whoHasSignedTheInstallerIsToldBeforeItStarts()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.installerSigner.set("Somebody Ltd.");
        QStringList told;
        SystemInfo::installVirtualCable("C:/KOLM", [&](const QString &signer) {
            told << signer;
            QVERIFY(pc.journal.lines().isEmpty());
        });
        QCOMPARE(told, QStringList("Somebody Ltd."));
        QCOMPARE(pc.journal.lines().size(), 1);
    }

    void anInstallerThatNobodyHasSignedIsNotStarted()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.installerSigner.set("");
        announce("install audio: nobody has signed the installer, it is not started");
        QStringList told;
        SystemInfo::installVirtualCable("C:/KOLM", [&](const QString &signer) { told << signer; });
        QCOMPARE(told, QStringList(QString()));
        QVERIFY(pc.journal.lines().isEmpty());
        // As a refused elevation.
        QCOMPARE(logged().last(), QString("install audio res: 5"));
    }
};

KOLM_TEST_MAIN(TestSoundDevices)
#include "tst_sound_devices.moc"
