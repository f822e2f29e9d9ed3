#include "base/last_lines.h"
#include "tests/support/test_case.h"

class TestLastLines : public TestCase
{
    Q_OBJECT

    static QStringList kept()
    {
        QStringList lines;
        last_lines::forEach(
            [](const char *text, std::size_t size, void *context) {
                static_cast<QStringList *>(context)->append(
                    QString::fromUtf8(text, static_cast<int>(size)));
            },
            &lines);
        return lines;
    }
    static void add(const QByteArray &line)
    {
        last_lines::add(line.constData(), static_cast<size_t>(line.size()));
    }

private slots:
    void theyComeInTheirOrder()
    {
        QCOMPARE(kept(), QStringList());
        add("one");
        add("");
        add("three");
        QCOMPARE(kept(), QStringList({"one", "", "three"}));
    }

    void onlyTheLastAreKept()
    {
        const int many = 3 * int(last_lines::count) + 7;
        for (int i = 0; i < many; ++i)
            add(QByteArray::number(i));
        QCOMPARE(kept().size(), int(last_lines::count));
        QCOMPARE(kept().first(), QString::number(many - int(last_lines::count)));
        QCOMPARE(kept().last(), QString::number(many - 1));
    }

    void ofALongOneTheBeginningIsKept()
    {
        add(QByteArray(100000, 'a') + "end");
        QCOMPARE(kept().last(), QString(int(last_lines::longest), 'a'));
    }
};

KOLM_TEST_MAIN(TestLastLines)
#include "tst_last_lines.moc"
