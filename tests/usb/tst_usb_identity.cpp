#include "tests/support/test_case.h"
#include "usb/usb_identity.h"

class UsbIdentityTest : public TestCase
{
    Q_OBJECT

private slots:
    void aPathIsAHeadsetsOrNot_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("isHeadset");
        QTest::newRow("a headset")
            << R"(\\?\USB#VID_05C6&PID_903A#PA7910#{a5dcbf10-6530-11d2-901f-00c04fb951ed})" << true;
        QTest::newRow("in lower case")
            << R"(\\?\usb#vid_05c6&pid_903a#pa7910#{a5dcbf10-6530-11d2-901f-00c04fb951ed})" << true;
        QTest::newRow("another product of the same maker")
            << R"(\\?\USB#VID_05C6&PID_9091#PA7910#{a5dcbf10-6530-11d2-901f-00c04fb951ed})"
            << false;
        QTest::newRow("one function of a composite device")
            << R"(\\?\USB#VID_05C6&PID_903A&MI_01#7&1&1#{a5dcbf10-6530-11d2-901f-00c04fb951ed})"
            << false;
        QTest::newRow("a disk")
            << R"(\\?\USBSTOR#Disk&Ven_Acme&Prod_Stick#0123&0#{53f56307-b6bf-11d0-94f2-00a0c91efb8b})"
            << false;
        QTest::newRow("a network adapter")
            << R"(\\?\PCI#VEN_8086&DEV_15B8#3&11583659&0&FE#{ad498944-762f-11d0-8dcb-00c04fc3358c})"
            << false;
        QTest::newRow("a keyboard")
            << R"(\\?\HID#VID_046D&PID_C31C&MI_00#8&1&0#{4d1e55b2-f16f-11cf-88cb-001111000030})"
            << false;
        QTest::newRow("the identity ends in the last #")
            << R"(\\?\USB#VID_05C6&PID_903A#)" << false;
        QTest::newRow("the identity behind the last #") << R"(X#Y#USB)" << false;
        QTest::newRow("no # at all") << "PA7910" << false;
        QTest::newRow("nothing") << "" << false;
    }

    void aPathIsAHeadsetsOrNot()
    {
        QFETCH(QString, path);
        QFETCH(bool, isHeadset);
        QCOMPARE(usb_identity::isHeadset(path), isHeadset);
    }
};

KOLM_TEST_MAIN(UsbIdentityTest)
#include "tst_usb_identity.moc"
