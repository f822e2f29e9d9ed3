#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "tests/win/installed_program_win.h"

#include <QTcpServer>

using namespace installed_program;

// Whoever listens where a cloud could be: a program that was built without one does
// not find him.
class TestNoCloudWin : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(installAll()); }

    void nobodyOnThisPcIsAsked()
    {
        QTcpServer listener;
        if (!listener.listen(QHostAddress::LocalHost, 18443))
            QSKIP("Another cloud is here.");
        QVERIFY(layOutFiles(false));
        Copy program;
        QVERIFY(program.start());
        QVERIFY(waitUntil([&] { return program.window().has_value(); }));
        program.askToClose(); // sends the last events
        QCOMPARE(program.waitForEnd().value_or(-1), 0);
        QVERIFY(!listener.waitForNewConnection(0));
        QVERIFY(!log().contains("Download of"));
        QVERIFY(!log().contains("error evnetid"));
    }
};

KOLM_GUI_TEST_MAIN(TestNoCloudWin)
#include "tst_no_cloud_win.moc"
