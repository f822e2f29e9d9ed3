#include "tests/qml/dialog_states.h"
#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

// The notices: of the battery, of the driver and of the ports.
class TestNotices : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void batteryNoticeGoesWithTheBattery()
    {
        Interface pages;
        showDialog(pages, "power");
        emit pages.orb.closePowerTip();
        QVERIFY(!pages.dialog());
    }

    void driverNoticeLeadsToTheHelp()
    {
        Interface pages;
        showDialog(pages, "driver");
        pages.click(pages.inDialog("help"));
        QCOMPARE(pages.orb.calls, QStringList("gotoWeb 1"));
        QVERIFY(pages.dialog());
    }

    void programsAreListed_data()
    {
        QTest::addColumn<QString>("names");
        QTest::addColumn<QStringList>("shown");

        QTest::newRow("one") << "nginx.exe" << QStringList{"nginx.exe"};
        QTest::newRow("semicolon") << "a.exe;b.exe" << QStringList{"a.exe", "b.exe"};
        QTest::newRow("comma") << "a.exe, b.exe" << QStringList{"a.exe", "b.exe"};
        QTest::newRow("Chinese comma") << zh("a.exe、b.exe") << QStringList{"a.exe", "b.exe"};
        QTest::newRow("comma in a name") << "a,b.exe, c.exe" << QStringList{"a,b.exe", "c.exe"};
        QTest::newRow("blank in a name") << "a b.exe;c.exe" << QStringList{"a b.exe", "c.exe"};
        QTest::newRow("nothing between") << "a.exe;;" << QStringList{"a.exe"};
    }
    void programsAreListed()
    {
        QFETCH(QString, names);
        QFETCH(QStringList, shown);

        Interface pages;
        QVERIFY(pages.load());
        emit pages.orb.showUseProtPage(names);
        pages.settle();
        QCOMPARE(Interface::texts(pages.inDialog("programs")), shown);
    }

    void portsThatAreStillTakenKeepTheNotice()
    {
        Interface pages;
        showDialog(pages, "ports");
        pages.orb.portHolders = "python.exe";
        pages.click(pages.inDialog("confirm"));
        pages.settle();
        QCOMPARE(pages.orb.calls, QStringList("checkPortUsage"));
        QVERIFY(pages.dialogTexts().contains("python.exe"));
        QVERIFY(!pages.dialogTexts().contains("nginx.exe"));
        QVERIFY(!pages.inDialog("free"));
    }

    void portsThatAreFreeAreAnnounced()
    {
        Interface pages;
        showDialog(pages, "ports");
        pages.press(Qt::Key_Return);
        pages.settle();
        QCOMPARE(pages.orb.calls, QStringList("checkPortUsage"));
        QVERIFY(pages.inDialog("free"));
        QVERIFY(!pages.inDialog("programs"));
        pages.press(Qt::Key_Return);
        QVERIFY(!pages.dialog());
        QCOMPARE(pages.orb.calls, QStringList("checkPortUsage"));
    }
};

KOLM_GUI_TEST_MAIN(TestNotices)
#include "tst_notices.moc"
