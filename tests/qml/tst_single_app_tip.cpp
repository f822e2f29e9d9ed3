#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QCloseEvent>

namespace {

const QString url = QStringLiteral("qrc:/qml/windows/SingleAppTip.qml");

} // namespace

// The window of a second copy, in which neither the controller nor its type
// exists.
class TestSingleAppTip : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void saysThatTheProgramRunsAlready()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.loadAlone(url);
        QVERIFY(window);
        QVERIFY(window->isVisible());
        QCOMPARE(window->size(), QSize(400, 300));
        QCOMPARE(pages.firstSize(), QSize(400, 300));
        QCOMPARE(window->title(), zh("提示"));
        QVERIFY(!window->needShadow());
        QVERIFY(window->titleBar());
        QCOMPARE(Interface::texts(window->contentItem()),
                 (QStringList{zh("提示"), zh("应用程序已打开"), zh("确定")}));
    }

    void buttonAndIconCloseIt_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("button") << "confirm";
        QTest::newRow("icon") << "close";
    }
    void buttonAndIconCloseIt()
    {
        QFETCH(QString, name);
        Interface pages;
        FramelessQuickWindow *window = pages.loadAlone(url);
        pages.click(name);
        QVERIFY(!window->isVisible());
    }

    void closesByItselfAfterFourSeconds()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.loadAlone(url);
        const QObject *timer = pages.find("closeTimer");
        QCOMPARE(timer->property("interval").toInt(), 4000);
        QVERIFY(timer->property("running").toBool());
        QVERIFY(!timer->property("repeat").toBool());
        pages.clock.advance(3999);
        QVERIFY(window->isVisible());
        pages.clock.advance(1);
        QVERIFY(!window->isVisible());
    }

    void closeRequestClosesIt()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.loadAlone(url);
        QCloseEvent request;
        QCoreApplication::sendEvent(window, &request);
        QVERIFY(!window->isVisible());
    }

    void keysCloseIt_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Enter") << int(Qt::Key_Return);
        QTest::newRow("Escape") << int(Qt::Key_Escape);
    }
    void keysCloseIt()
    {
        QFETCH(int, key);
        Interface pages;
        FramelessQuickWindow *window = pages.loadAlone(url);
        window->requestActivate();
        QTRY_VERIFY(window->isActive());
        QTest::keyClick(window, Qt::Key(key));
        QVERIFY(!window->isVisible());
    }

    void asksNothingOfTheController()
    {
        Interface pages;
        pages.loadAlone(url);
        QCOMPARE(pages.orb.calls, QStringList());
    }
};

KOLM_GUI_TEST_MAIN(TestSingleAppTip)
#include "tst_single_app_tip.moc"
