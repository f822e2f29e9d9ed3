#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QGuiApplication>
#include <QSignalSpy>

// The place of a dialog over any window; "one.qml" and "two.qml" are ordinary
// pages, what "notice.qml" says has to be read. All of them are stand-ins.
class TestDialogHost : public TestCase
{
    Q_OBJECT

    struct Place : Interface
    {
        Place()
        {
            standInPages();
            loadAlone(QStringLiteral("qrc:/tests/DialogPlace.qml"));
            host = find(QStringLiteral("host"));
        }
        bool open(const char *page, const QVariantMap &properties = {}) const
        {
            QVariant done;
            QMetaObject::invokeMethod(host, "open", Q_RETURN_ARG(QVariant, done),
                                      Q_ARG(QVariant, url(page)), Q_ARG(QVariant, properties));
            return done.toBool();
        }
        void ask(const char *page) const
        {
            QMetaObject::invokeMethod(host, "ask", Q_ARG(QVariant, url(page)));
        }
        bool isBlocked() const
        {
            QVariant blocked;
            QMetaObject::invokeMethod(host, "isBlocked", Q_RETURN_ARG(QVariant, blocked));
            return blocked.toBool();
        }
        // Closes what is open; what waited comes when that is over.
        void closeIt() const
        {
            dialog()->close();
            QCoreApplication::processEvents();
        }
        static QString url(const char *page)
        {
            return QStringLiteral("qrc:/qml/windows/") + QLatin1String(page);
        }

        QObject *host = nullptr;
    };

private slots:
    void initTestCase() { registerInterface(); }

    void isEmptyAtFirst()
    {
        const Place place;
        QVERIFY(place.host);
        QVERIFY(!place.host->property("shown").toBool());
        QVERIFY(!place.shown("dim"));
        QVERIFY(!place.isBlocked());
    }

    void showsOneDialogInTheMiddleOfItsOwner()
    {
        const Place place;
        place.window()->setPosition(40, 30);
        QVERIFY(place.open("one.qml", {{"text", "hello"}}));
        QCOMPARE(place.dialogFile(), QStringLiteral("one.qml"));
        QCOMPARE(place.dialog()->property("text").toString(), QStringLiteral("hello"));
        QCOMPARE(place.dialog()->parentWin(), place.window());
        QCOMPARE(place.dialog()->position(), QPoint(40 + 300 - 240, 30 + 200 - 160));
        QTRY_VERIFY(place.dialog()->isActive());
    }

    void laterOneReplacesIt()
    {
        const Place place;
        QVERIFY(place.open("one.qml"));
        const QPointer<QWindow> first = place.dialog();
        QVERIFY(place.open("two.qml"));
        QCOMPARE(place.dialogFile(), QStringLiteral("two.qml"));
        QTRY_VERIFY(!first);
    }

    void blockingPageStaysUntilItIsClosed()
    {
        const Place place;
        QVERIFY(place.open("notice.qml"));
        QVERIFY(place.isBlocked());
        QVERIFY(!place.open("one.qml"));
        QVERIFY(!place.open("notice.qml"));
        QCOMPARE(place.dialogFile(), QStringLiteral("notice.qml"));
        place.closeIt();
        QVERIFY(!place.isBlocked());
        QVERIFY(place.open("one.qml"));
    }

    void questionWaitsForTheBlockingPage()
    {
        const Place place;
        QVERIFY(place.open("notice.qml"));
        place.ask("one.qml");
        QCOMPARE(place.dialogFile(), QStringLiteral("notice.qml"));
        place.dialog()->close();
        QVERIFY(!place.dialog()); // what closes it is done first
        QTRY_VERIFY(place.dialog());
        QCOMPARE(place.dialogFile(), QStringLiteral("one.qml"));
        place.closeIt();
        QVERIFY(!place.dialog());
    }

    void questionThatCanBeAskedDoesNotWait()
    {
        const Place place;
        place.ask("one.qml");
        QCOMPARE(place.dialogFile(), QStringLiteral("one.qml"));
        QCOMPARE(place.host->property("waiting").toString(), QString());
    }

    void settledQuestionIsForgotten()
    {
        const Place place;
        QVERIFY(place.open("notice.qml"));
        place.ask("one.qml");
        place.host->setProperty("settled", true);
        place.closeIt();
        QVERIFY(!place.dialog());
        // Also when it would not be settled any more.
        place.host->setProperty("settled", false);
        QVERIFY(place.open("notice.qml"));
        place.closeIt();
        QVERIFY(!place.dialog());
    }

    void questionIsNotAskedWhenNobodyMayBeAsked()
    {
        const Place place;
        QVERIFY(place.open("notice.qml"));
        place.ask("one.qml");
        place.host->setProperty("asks", false);
        place.closeIt();
        QVERIFY(!place.dialog());
    }

    void dimsAndBlocksWhatLiesBelow()
    {
        Place place;
        const auto presses = [&] { return place.window()->property("presses").toInt(); };
        place.settle();
        const QPoint exit(550, 10);
        const QPoint title(300, 10);
        const QPoint card(550, 300);
        for (const QPoint &spot : {exit, title, card})
            QTest::mouseClick(place.window(), Qt::LeftButton, {}, spot);
        QCOMPARE(presses(), 3);

        QVERIFY(place.open("one.qml"));
        QVERIFY(place.shown("dim"));
        QCOMPARE(place.item("dim")->size(), QSizeF(600, 400));
        for (const QPoint &spot : {title, card})
            QTest::mouseClick(place.window(), Qt::LeftButton, {}, spot);
        QCOMPARE(presses(), 3);
        QTest::mouseClick(place.window(), Qt::LeftButton, {}, exit);
        QCOMPARE(presses(), 4);

        place.closeIt();
        QVERIFY(!place.shown("dim"));
        QTest::mouseClick(place.window(), Qt::LeftButton, {}, card);
        QCOMPARE(presses(), 5);
    }

    void hiddenDialogIsDroppedASecondLater()
    {
        Place place;
        QVERIFY(place.open("one.qml"));
        const QPointer<QWindow> dialog = place.dialog();
        place.clock.advance(5000);
        QVERIFY(place.dialog());
        dialog->close();
        place.clock.advance(999);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(dialog);
        place.clock.advance(1);
        QTRY_VERIFY(!dialog);
        QCOMPARE(place.dialogFile(), QString());
    }

    void keyboardOfTheOwnerGoesToTheDialog()
    {
        const Place place;
        QVERIFY(place.open("one.qml"));
        QTRY_VERIFY(place.dialog()->isActive());
        bool returned = false;
        connect(qApp, &QGuiApplication::focusWindowChanged, place.window(),
                [&](const QWindow *focused) { returned |= focused == place.window(); });
        place.window()->requestActivate();
        QTRY_VERIFY(returned);
        QTRY_COMPARE(QGuiApplication::focusWindow(), place.dialog());
    }

    void showingItAgainBringsItToTheFront()
    {
        const Place place;
        QVERIFY(place.open("one.qml"));
        QTRY_VERIFY(place.dialog()->isActive());
        QWindow other;
        other.show();
        other.requestActivate();
        QTRY_VERIFY(other.isActive());
        QMetaObject::invokeMethod(place.host, "show");
        QTRY_VERIFY(place.dialog()->isActive());
    }

    void ownerMayCloseIt()
    {
        const Place place;
        QMetaObject::invokeMethod(place.host, "close"); // there is none yet
        QVERIFY(place.open("one.qml"));
        QMetaObject::invokeMethod(place.host, "close");
        QVERIFY(!place.dialog());
        QMetaObject::invokeMethod(place.host, "close");
    }

    void passesOnWhatTheDialogWants()
    {
        const Place place;
        QVERIFY(place.open("one.qml"));
        const QSignalSpy accepted(place.host, SIGNAL(accepted()));
        const QSignalSpy toast(place.host, SIGNAL(toast(QString, int)));
        const QSignalSpy closeMain(place.host, SIGNAL(closeMain()));
        const QSignalSpy leaveProgram(place.host, SIGNAL(leaveProgram()));
        QMetaObject::invokeMethod(place.dialog(), "accepted");
        QMetaObject::invokeMethod(place.dialog(), "toast", Q_ARG(QString, "hi"), Q_ARG(int, 7));
        QMetaObject::invokeMethod(place.dialog(), "closeMain");
        QMetaObject::invokeMethod(place.dialog(), "leaveProgram");
        QCOMPARE(accepted.count(), 1);
        QCOMPARE(toast.count(), 1);
        QCOMPARE(toast.first(), (QVariantList{"hi", 7}));
        QCOMPARE(closeMain.count(), 1);
        QCOMPARE(leaveProgram.count(), 1);
        QVERIFY(place.dialog());
    }

    void dialogMayNameTheNext()
    {
        const Place place;
        QVERIFY(place.open("one.qml"));
        QMetaObject::invokeMethod(place.dialog(), "openPage", Q_ARG(QString, Place::url("two.qml")),
                                  Q_ARG(QVariant, QVariantMap({{"text", "next"}})));
        QCOMPARE(place.dialogFile(), QStringLiteral("two.qml"));
        QCOMPARE(place.dialog()->property("text").toString(), QStringLiteral("next"));
    }

    void pageThatCannotBeMadeIsNotShown()
    {
        Place place;
        announce(QStringLiteral("qrc:/qml/broken.qml: No such file or directory"));
        QVariant done = true;
        QMetaObject::invokeMethod(place.host, "open", Q_RETURN_ARG(QVariant, done),
                                  Q_ARG(QVariant, "qrc:/qml/broken.qml"),
                                  Q_ARG(QVariant, QVariant()));
        QVERIFY(!done.toBool());
        QVERIFY(!place.shown("dim"));
    }
};

KOLM_GUI_TEST_MAIN(TestDialogHost)
#include "tst_dialog_host.moc"
