#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

// What the user writes to us: its limits, and what is sent.
class TestFeedbackPage : public TestCase
{
    Q_OBJECT

    static void open(Interface &pages)
    {
        QVERIFY(pages.load());
        pages.click("feedback");
        QVERIFY(pages.dialog());
        pages.orb.calls.clear();
        pages.dialog()->requestActivate();
        QTRY_VERIFY(pages.dialog()->isActive());
    }
    static QQuickItem *edit(Interface &pages, const QString &field)
    {
        return pages.inDialog(field)->findChild<QQuickItem *>("edit");
    }
    static void write(Interface &pages, const QString &field, const QString &text)
    {
        edit(pages, field)->setProperty("text", text);
        pages.settle();
    }
    static QString written(Interface &pages, const QString &field)
    {
        return pages.inDialog(field)->property("text").toString();
    }
    static bool canSend(Interface &pages)
    {
        return pages.inDialog("send")->property("enabled").toBool();
    }

private slots:
    void initTestCase() { registerInterface(); }

    void nothingIsNotSent_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << "";
        QTest::newRow("blanks") << "   ";
        QTest::newRow("lines") << "\n \n";
        QTest::newRow("ideographic blank") << zh("　");
    }
    void nothingIsNotSent()
    {
        QFETCH(QString, text);
        Interface pages;
        open(pages);
        write(pages, "content", text);
        QVERIFY(!canSend(pages));
        pages.click(pages.inDialog("send"));
        edit(pages, "contact")->forceActiveFocus();
        QTest::keyClick(pages.dialog(), Qt::Key_Return);
        QCOMPARE(pages.orb.calls, QStringList());
        QVERIFY(pages.inDialog("content"));
    }

    void textAndContactAreSentTrimmed()
    {
        Interface pages;
        open(pages);
        write(pages, "content", "  The picture stutters.\nSometimes. \n");
        write(pages, "contact", " me@example.com ");
        QVERIFY(canSend(pages));
        pages.click(pages.inDialog("send"));
        QCOMPARE(pages.orb.calls,
                 QStringList("sendFeecback 'The picture stutters.\nSometimes.' 'me@example.com'"));
        QVERIFY(pages.inDialog("thanks"));
        QVERIFY(!pages.inDialog("content"));
    }

    void contactMayBeMissing()
    {
        Interface pages;
        open(pages);
        write(pages, "content", "Good");
        pages.click(pages.inDialog("send"));
        QCOMPARE(pages.orb.calls, QStringList("sendFeecback 'Good' ''"));
    }

    void thanksComeWhenTheCloudHasIt()
    {
        Interface pages;
        pages.feedbackBecomes = FeedbackStatus::Sending;
        open(pages);
        write(pages, "content", "Good");
        pages.click(pages.inDialog("send"));
        QVERIFY(pages.inDialog("sending"));
        QVERIFY(!pages.inDialog("thanks"));
        pages.feedback.set(FeedbackStatus::Sent);
        QVERIFY(!pages.inDialog("sending"));
        QVERIFY(pages.inDialog("thanks"));
    }

    void whatCouldNotBeSentIsNotThankedFor()
    {
        Interface pages;
        pages.feedbackBecomes = FeedbackStatus::Kept;
        open(pages);
        write(pages, "content", "Good");
        pages.click(pages.inDialog("send"));
        QVERIFY(pages.inDialog("kept"));
        QVERIFY(!pages.inDialog("thanks"));
        QVERIFY(pages.inDialog("done"));
    }

    void whatCouldNotBeWrittenCanBeSentAgain()
    {
        Interface pages;
        pages.feedbackBecomes = FeedbackStatus::NotWritten;
        open(pages);
        QVERIFY(!pages.inDialog("notWritten"));
        write(pages, "content", "Good");
        pages.click(pages.inDialog("send"));
        QVERIFY(pages.inDialog("notWritten"));
        QVERIFY(!pages.inDialog("thanks"));
        QCOMPARE(written(pages, "content"), QString("Good"));
        pages.feedbackBecomes = FeedbackStatus::Sent;
        pages.click(pages.inDialog("send"));
        QVERIFY(pages.inDialog("thanks"));
        QCOMPARE(pages.orb.calls.size(), 2);
    }

    void whatBecameOfAnEarlierOneIsNotShown()
    {
        Interface pages;
        pages.feedback.set(FeedbackStatus::NotWritten);
        open(pages);
        QVERIFY(pages.inDialog("content"));
        QVERIFY(!pages.inDialog("notWritten"));
    }

    void feedbackIsSentOnce()
    {
        Interface pages;
        open(pages);
        write(pages, "content", "Good");
        pages.click(pages.inDialog("send"));
        pages.settle();
        QTest::keyClick(pages.dialog(), Qt::Key_Return);
        QVERIFY(!pages.dialog());
        QCOMPARE(pages.orb.calls.size(), 1);
    }

    void limitCutsWhatIsTooMuch_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<int>("limit");
        QTest::newRow("text") << "content" << 500;
        QTest::newRow("contact") << "contact" << 50;
    }
    void limitCutsWhatIsTooMuch()
    {
        QFETCH(QString, field);
        QFETCH(int, limit);
        Interface pages;
        open(pages);
        write(pages, field, QString(limit, 'a'));
        QCOMPARE(written(pages, field), QString(limit, 'a'));
        write(pages, field, QString(limit + 1, 'b'));
        QCOMPARE(written(pages, field), QString(limit, 'b'));
        edit(pages, field)->forceActiveFocus();
        QTest::keyClick(pages.dialog(), Qt::Key_End);
        QTest::keyClick(pages.dialog(), 'c');
        QCOMPARE(written(pages, field), QString(limit, 'b'));
        QCOMPARE(edit(pages, field)->property("text").toString(), QString(limit, 'b'));
    }

    void limitKeepsCharactersWhole()
    {
        const QString face = QString::fromUcs4(U"\U0001F600", 1); // two units
        Interface pages;
        open(pages);
        write(pages, "contact", QString(49, 'a') + face);
        QCOMPARE(written(pages, "contact"), QString(49, 'a'));
        write(pages, "contact", QString(48, 'a') + face);
        QCOMPARE(written(pages, "contact"), QString(48, 'a') + face);
    }

    void fullFieldLosesNothingToWhatIsWrittenInTheMiddle()
    {
        Interface pages;
        open(pages);
        write(pages, "contact", QString(25, 'a') + QString(24, 'b'));
        edit(pages, "contact")->forceActiveFocus();
        edit(pages, "contact")->setProperty("cursorPosition", 10);
        QTest::keyClick(pages.dialog(), 'x');
        QTest::keyClick(pages.dialog(), 'y');
        QCOMPARE(written(pages, "contact"),
                 QString(10, 'a') + 'x' + QString(15, 'a') + QString(24, 'b'));
        QCOMPARE(edit(pages, "contact")->property("cursorPosition").toInt(), 11);
    }

    void whatIsPastedFillsTheRoomThatIsLeft()
    {
        const QString face = QString::fromUcs4(U"\U0001F600", 1);
        Interface pages;
        open(pages);
        write(pages, "contact", QString(47, 'a'));
        edit(pages, "contact")->setProperty("cursorPosition", 5);
        QMetaObject::invokeMethod(edit(pages, "contact"), "insert", Q_ARG(int, 5),
                                  Q_ARG(QString, face + face));
        QCOMPARE(written(pages, "contact"), QString(5, 'a') + face + QString(42, 'a'));
    }

    void counterTellsHowMuchIsWritten()
    {
        Interface pages;
        open(pages);
        QCOMPARE(pages.inDialog("counter")->property("text").toString(), QString("0/500"));
        write(pages, "content", "Good");
        QCOMPARE(pages.inDialog("counter")->property("text").toString(), QString("4/500"));
    }

    void contactIsOneLine()
    {
        Interface pages;
        open(pages);
        write(pages, "contact", "a\r\nb\nc");
        QCOMPARE(written(pages, "contact"), QString("a b c"));
    }

    void pageIsReadyToWrite()
    {
        Interface pages;
        open(pages);
        QVERIFY(edit(pages, "content")->hasActiveFocus());
        QTest::keyClick(pages.dialog(), 'h');
        QTest::keyClick(pages.dialog(), 'i');
        QCOMPARE(written(pages, "content"), QString("hi"));
    }

    void tabulatorMovesOn()
    {
        Interface pages;
        open(pages);
        QTest::keyClick(pages.dialog(), Qt::Key_Tab);
        QVERIFY(edit(pages, "contact")->hasActiveFocus());
        QTest::keyClick(pages.dialog(), Qt::Key_Backtab, Qt::ShiftModifier);
        QVERIFY(edit(pages, "content")->hasActiveFocus());
        QCOMPARE(written(pages, "content"), QString());
    }

    void enterBreaksALineInTheText()
    {
        Interface pages;
        open(pages);
        QTest::keyClick(pages.dialog(), 'a');
        QTest::keyClick(pages.dialog(), Qt::Key_Return);
        QTest::keyClick(pages.dialog(), 'b');
        QCOMPARE(written(pages, "content"), QString("a\nb"));
        QCOMPARE(pages.orb.calls, QStringList());
    }

    void controlAndEnterInTheTextSend()
    {
        Interface pages;
        open(pages);
        QTest::keyClick(pages.dialog(), Qt::Key_Return, Qt::ControlModifier); // nothing yet
        QTest::keyClick(pages.dialog(), 'a');
        QTest::keyClick(pages.dialog(), Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(pages.orb.calls, QStringList("sendFeecback 'a' ''"));
        QVERIFY(pages.inDialog("thanks"));
    }

    void enterInTheContactSends()
    {
        Interface pages;
        open(pages);
        write(pages, "content", "Good");
        edit(pages, "contact")->forceActiveFocus();
        QTest::keyClick(pages.dialog(), Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(pages.orb.calls, QStringList("sendFeecback 'Good' ''"));
    }

    void escapeLeaves()
    {
        Interface pages;
        open(pages);
        write(pages, "content", "Good");
        QTest::keyClick(pages.dialog(), Qt::Key_Escape);
        QVERIFY(!pages.dialog());
        QCOMPARE(pages.orb.calls, QStringList());
    }
};

KOLM_GUI_TEST_MAIN(TestFeedbackPage)
#include "tst_feedback_page.moc"
