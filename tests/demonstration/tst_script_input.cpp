#include "demonstration/script_input.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>
#include <QSocketNotifier>

#include <unistd.h>

class TestScriptInput : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        QCOMPARE(pipe(ends_), 0);
    }

    void cleanup()
    {
        finish();
        ::close(ends_[0]);
        TestCase::cleanup();
    }

    void whatIsWrittenArrives()
    {
        const ScriptInput input(ends_[0]);
        const QSignalSpy arrived(&input, &ScriptInput::arrived);
        write("click close\nty");
        QTRY_COMPARE(all(arrived), QByteArray("click close\nty"));
        write("pe 中\n");
        QTRY_COMPARE(all(arrived), QByteArray("click close\ntype 中\n"));
    }

    void longScriptArrivesWhole()
    {
        const ScriptInput input(ends_[0]);
        const QSignalSpy arrived(&input, &ScriptInput::arrived);
        QByteArray script;
        for (int i = 0; i < 3000; ++i)
            script += "wait " + QByteArray::number(i) + '\n';
        write(script);
        finish();
        QTRY_COMPARE(all(arrived), script);
    }

    void endOfTheScriptIsNotAskedAboutAgain()
    {
        const ScriptInput input(ends_[0]);
        const QSignalSpy arrived(&input, &ScriptInput::arrived);
        finish();
        // An end that is still watched keeps the event loop busy for ever.
        const auto *notifier = input.findChild<QSocketNotifier *>();
        QVERIFY(notifier);
        QTRY_VERIFY(!notifier->isEnabled());
        QCOMPARE(arrived.count(), 0);
    }

private:
    void write(const QByteArray &text)
    {
        QCOMPARE(::write(ends_[1], text.constData(), size_t(text.size())), ssize_t(text.size()));
    }
    void finish()
    {
        if (ends_[1] >= 0)
            ::close(ends_[1]);
        ends_[1] = -1;
    }
    static QByteArray all(const QSignalSpy &arrived)
    {
        QByteArray text;
        for (const QList<QVariant> &arguments : arrived)
            text += arguments.value(0).toByteArray();
        return text;
    }

    int ends_[2] = {-1, -1};
};

KOLM_TEST_MAIN(TestScriptInput)
#include "tst_script_input.moc"
