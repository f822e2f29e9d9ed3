#include "demonstration/quick_screen.h"
#include "tests/demonstration/small_window.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QGuiApplication>
#include <QUrl>

namespace {

// What the main window of the program has that a screen is asked for.
const QByteArray page = R"(Window {
    x: 100; y: 50; width: 200; height: 120
    property string done
    property string pressed
    MouseArea { objectName: "low"; y: 80; width: 40; height: 20; onClicked: done += "low " }
    MouseArea { objectName: "row"; y: 40; width: 40; height: 20; onClicked: done += "second " }
    MouseArea { objectName: "row"; y: 10; width: 40; height: 20; onClicked: done += "first " }
    MouseArea { objectName: "row"; y: 0; width: 40; height: 5; visible: false
                onClicked: done += "hidden " }
    Item { visible: false; Item { objectName: "within"; width: 10; height: 10 } }
    Item { x: 50; y: 20; Item { objectName: "inner"; x: 10; y: 10; width: 20; height: 10 } }
    Item { objectName: "keys"; focus: true
           Keys.onPressed: pressed += event.key + "/" + event.modifiers + "/" + event.text + " " }
    Loader { objectName: "subWin" }
    Window { objectName: "toast"; width: 80; height: 20
             flags: Qt.ToolTip | Qt.WindowDoesNotAcceptFocus
             MouseArea { objectName: "inToast"; width: 80; height: 20
                         onClicked: done += "toast " } } })";

} // namespace

class TestQuickScreen : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        small_ = std::make_unique<SmallWindow>(page);
        screen_ = std::make_unique<QuickScreen>(small_->window());
    }

    void cleanup()
    {
        screen_.reset();
        small_.reset();
        TestCase::cleanup();
    }

    void itemIsWhereItIsShown()
    {
        QCOMPARE(screen().middleOf({"inner"}), QPoint(100 + 50 + 10 + 10, 50 + 20 + 10 + 5));
    }

    void whatIsNotShownIsNotThere_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("number");
        QTest::newRow("no such name") << "nothing" << 1;
        QTest::newRow("within something hidden") << "within" << 1;
        QTest::newRow("one more than are shown") << "row" << 3;
        QTest::newRow("in a hidden window") << "inToast" << 1;
    }

    void whatIsNotShownIsNotThere()
    {
        QFETCH(QString, name);
        QFETCH(int, number);
        QVERIFY(!screen().middleOf({name, number}));
        QVERIFY(!screen().click({name, number}));
        QCOMPARE(clicked(), QString());
    }

    void itemsOfOneNameCountFromAbove()
    {
        QCOMPARE(screen().middleOf({"row", 1}), QPoint(120, 70));
        QCOMPARE(screen().middleOf({"row", 2}), QPoint(120, 100));
    }

    void itemsAreClickedInTheirMiddle()
    {
        QVERIFY(screen().click({"row", 2}));
        QVERIFY(screen().click({"low"}));
        QVERIFY(screen().click({"row"}));
        QTRY_COMPARE(clicked(), QString("second low first "));
    }

    void windowInFrontComesFirst()
    {
        openDialog("SettingPage.qml");
        const auto *dialog = small_->find("subWin")->property("item").value<QWindow *>();
        QVERIFY(dialog);
        QCOMPARE(screen().middleOf({"row", 1}), dialog->mapToGlobal({10, 32}));
        QCOMPARE(screen().middleOf({"row", 2}), QPoint(120, 70));
        // A toast is above the dialog, whichever came first.
        toast().show();
        QVERIFY(screen().click({"inToast"}));
        QTRY_COMPARE(clicked(), QString("toast "));
        const SmallWindow later(R"(Window { x: 300; y: 200; width: 20; height: 20
        flags: Qt.ToolTip | Qt.WindowDoesNotAcceptFocus
        Item { objectName: "row"; width: 20; height: 20 } })");
        QCOMPARE(screen().middleOf({"row", 1}), QPoint(310, 210));
    }

    void dialogIsNamedByItsFile()
    {
        QCOMPARE(screen().dialog(), QString());
        openDialog("SettingPage.qml");
        QCOMPARE(screen().dialog(), QString("SettingPage"));
    }

    void closedDialogIsNone()
    {
        openDialog("SettingPage.qml");
        small_->find("subWin")->property("item").value<QWindow *>()->hide();
        QCOMPARE(screen().dialog(), QString());
    }

    void toastIsSeenWhileItIsShown()
    {
        QCOMPARE(screen().toast(), std::optional<bool>(false));
        toast().show();
        QCOMPARE(screen().toast(), std::optional<bool>(true));
        toast().hide();
        QCOMPARE(screen().toast(), std::optional<bool>(false));
    }

    void windowWithoutToastHasNone()
    {
        const SmallWindow bare("Window { width: 10; height: 10 }");
        const QuickScreen bareScreen(bare.window());
        QVERIFY(!bareScreen.toast());
        QCOMPARE(bareScreen.dialog(), QString());
    }

    void keysReachTheWindowInFront_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::newRow("Return") << "Return" << int(Qt::Key_Return) << int(Qt::NoModifier);
        QTest::newRow("Escape") << "Escape" << int(Qt::Key_Escape) << int(Qt::NoModifier);
        QTest::newRow("with one held") << "Ctrl+A" << int(Qt::Key_A) << int(Qt::ControlModifier);
        QTest::newRow("with two held")
            << "Ctrl+Shift+F5" << int(Qt::Key_F5) << int(Qt::ControlModifier | Qt::ShiftModifier);
    }

    void keysReachTheWindowInFront()
    {
        QFETCH(QString, keys);
        QFETCH(int, key);
        QFETCH(int, modifiers);
        activate();
        QVERIFY(screen().pressKeys(keys).done);
        QTRY_COMPARE(pressed(), QString("%1/%2/ ").arg(key).arg(modifiers));
    }

    void keyThatDoesNotExistIsRefused()
    {
        activate();
        const Reply reply = screen().pressKeys("Fooo");
        QVERIFY(!reply.done);
        QCOMPARE(reply.text, QString("there is no such key"));
    }

    void textArrivesLetterByLetter()
    {
        activate();
        QVERIFY(screen().typeText("a 中").done);
        const QString unknown = QString::number(Qt::Key_unknown) + "/0/";
        QTRY_COMPARE(pressed(), unknown + "a " + unknown + "  " + unknown + "中 ");
    }

    void withoutAWindowInFrontThereIsNoKeyboard()
    {
        screen_.reset();
        small_.reset();
        QQuickWindow unseen;
        QuickScreen dark(unseen);
        for (const Reply &reply : {dark.pressKeys("Tab"), dark.typeText("a")}) {
            QVERIFY(!reply.done);
            QCOMPARE(reply.text, QString("no window has the keyboard"));
        }
    }

    void mainWindowIsShownAndPutAway()
    {
        screen().minimise();
        QCOMPARE(small_->window().windowState(), Qt::WindowMinimized);
        screen().show();
        QCOMPARE(small_->window().windowState(), Qt::WindowNoState);
        screen().hide();
        QVERIFY(!small_->window().isVisible());
        screen().show();
        QVERIFY(small_->window().isVisible());
    }

    void framesAreCountedFromOneQuestionToTheNext()
    {
        // It draws none by itself.
        QQuickWindow hidden;
        QuickScreen counting(hidden);
        QCOMPARE(counting.framesDrawn(), 0);
        for (int i = 0; i < 3; ++i)
            emit hidden.frameSwapped();
        QCOMPARE(counting.framesDrawn(), 3);
        QCOMPARE(counting.framesDrawn(), 0);
    }

    void windowOnItsWayIsNotComplete()
    {
        QVERIFY(screen().isComplete());
        QQuickWindow another;
        another.resize(30, 30);
        another.show();
        QVERIFY(!another.isExposed());
        QVERIFY(!screen().isComplete());
        QTRY_VERIFY(another.isExposed());
        QVERIFY(screen().isComplete());
    }

    void pictureNeedsAWindowAndAFile()
    {
        Reply reply = screen().takePicture(path("no such folder/a.png"));
        QVERIFY(!reply.done);
        QCOMPARE(reply.text, QString("it cannot be saved"));
        screen().hide();
        reply = screen().takePicture(path("a.png"));
        QVERIFY(!reply.done);
        QCOMPARE(reply.text, QString("no window is shown"));
    }

private:
    QuickScreen &screen() { return *screen_; }
    QString clicked() const { return small_->window().property("done").toString(); }
    QString pressed() const { return small_->window().property("pressed").toString(); }
    QWindow &toast() const { return *qobject_cast<QWindow *>(small_->find("toast")); }
    void openDialog(const QString &fileName)
    {
        writeFile(fileName, "import QtQuick 2.15\nimport QtQuick.Window 2.15\n"
                            "Window { width: 60; height: 40; visible: true\n"
                            "Item { objectName: \"row\"; x: 5; y: 30; width: 10; height: 4 } }\n");
        small_->find("subWin")->setProperty("source", QUrl::fromLocalFile(path(fileName)));
    }
    void activate()
    {
        screen().activate();
        QTRY_COMPARE(QGuiApplication::focusWindow(), &small_->window());
    }

    std::unique_ptr<SmallWindow> small_;
    std::unique_ptr<QuickScreen> screen_;
};

KOLM_GUI_TEST_MAIN(TestQuickScreen)
#include "tst_quick_screen.moc"
