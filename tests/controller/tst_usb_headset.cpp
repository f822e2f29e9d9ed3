#include "controller/usb_headset.h"
#include "tests/controller/controller_fixture.h"
#include "tests/support/test_case.h"

namespace {

struct Cable : PcFixture
{
    explicit Cable(const QString &folder) : PcFixture(folder)
    {
        const auto say = [this](const char *what) { return [this, what] { said << what; }; };
        QObject::connect(&usb, &UsbHeadset::attached,
                         [this](const QString &serial) { said << "attached " + serial; });
        QObject::connect(&usb, &UsbHeadset::detached, say("detached"));
        QObject::connect(&usb, &UsbHeadset::unreachable, say("unreachable"));
    }

    int made = 0;
    QStringList said;
    UsbHeadset usb{[this]() -> AdbManger & {
        ++made;
        return adb;
    }};
};

} // namespace

class TestUsbHeadset : public TestCase
{
    Q_OBJECT

private slots:
    void adbIsNotMadeBeforeItIsNeeded()
    {
        Cable cable(dir());
        QCOMPARE(cable.made, 0);
        cable.usb.watch();
        QCOMPARE(cable.made, 1);
    }

    void whatAdbSaysIsHandedOnOnce()
    {
        Cable cable(dir());
        emit cable.adb.deviceConnect(true, "D3EARLY"); // nobody listens yet
        cable.usb.watch();
        cable.usb.watch();
        QVERIFY(!cable.usb.serial());
        emit cable.adb.deviceConnect(true, "D3USB");
        QVERIFY(cable.usb.serial() == QString("D3USB"));
        emit cable.adb.deviceConnect(false, QString());
        QVERIFY(!cable.usb.serial());
        emit cable.adb.showAdbTipToast();
        QCOMPARE(cable.said, QStringList({"attached D3USB", "detached", "unreachable"}));
    }

    void whatWasSaidLastIsKnownWhenSomebodyHears()
    {
        Cable cable(dir());
        cable.usb.watch();
        QStringList known;
        const auto note = [&] { known << cable.usb.serial().value_or("none"); };
        connect(&cable.usb, &UsbHeadset::attached, note);
        connect(&cable.usb, &UsbHeadset::detached, note);
        emit cable.adb.deviceConnect(true, "D3USB");
        emit cable.adb.deviceConnect(false, QString());
        QCOMPARE(known, QStringList({"D3USB", "none"}));
    }

    // adb does not repeat what it said, so ending it must not make us forget.
    void endingAdbKeepsWhatItSaid()
    {
        Cable cable(dir());
        cable.usb.watch();
        emit cable.adb.deviceConnect(true, "D3USB");
        cable.pc.processes.start("adb.exe");
        cable.usb.stop();
        QVERIFY(!cable.pc.processes.isRunning("adb.exe"));
        QVERIFY(cable.usb.serial() == QString("D3USB"));
        QCOMPARE(cable.said, QStringList{"attached D3USB"});
    }

    void aLookAsksAdbForItsDevices()
    {
        Cable cable(dir());
        cable.adb.take("Android Debug Bridge version 1.0.41\r\n");
        cable.adbLines.clear();
        cable.usb.checkDevices();
        cable.clock.advance(800);
        QCOMPARE(cable.adbLines, QStringList{"adb devices && adb forward --list"});
    }
};

KOLM_TEST_MAIN(TestUsbHeadset)
#include "tst_usb_headset.moc"
