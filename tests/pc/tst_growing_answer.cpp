#include "pc/growing_answer.h"
#include "tests/support/test_case.h"

namespace {

// A table that needs the sizes of a list, one after the other, whatever room
// there is meanwhile.
struct Growing
{
    QList<int> needs;
    QList<int> asked = {};

    Fit operator()(std::uint32_t *size)
    {
        const int need = needs.value(asked.size(), needs.last());
        asked.append(static_cast<int>(*size));
        if (static_cast<int>(*size) >= need)
            return Fit::Fits;
        *size = static_cast<std::uint32_t>(need);
        return Fit::TooSmall;
    }
};

} // namespace

class TestGrowingAnswer : public TestCase
{
    Q_OBJECT

private slots:
    void itIsAskedForWithWhatWasLacking_data()
    {
        QTest::addColumn<QList<int>>("needs");
        QTest::addColumn<QList<int>>("asked");
        QTest::addColumn<bool>("fits");
        QTest::newRow("it fits at once") << QList<int>{32} << QList<int>{32} << true;
        QTest::newRow("it is larger") << QList<int>{100} << QList<int>{32, 100} << true;
        QTest::newRow("it grows once meanwhile")
            << QList<int>{100, 150} << QList<int>{32, 100, 150} << true;
        QTest::newRow("it shrinks meanwhile") << QList<int>{100, 50} << QList<int>{32, 100} << true;
        QTest::newRow("it grows until the last time")
            << QList<int>{100, 150, 200, 200} << QList<int>{32, 100, 150, 200} << true;
        QTest::newRow("it never stops")
            << QList<int>{100, 150, 200, 250, 300} << QList<int>{32, 100, 150, 200} << false;
    }
    void itIsAskedForWithWhatWasLacking()
    {
        QFETCH(QList<int>, needs);
        QFETCH(bool, fits);
        Growing table{needs};
        const Fit fit = askUntilItFits(32, 4, [&](std::uint32_t *size) { return table(size); });
        QCOMPARE(fit, fits ? Fit::Fits : Fit::TooSmall);
        QTEST(table.asked, "asked");
    }

    void aRefusalIsTheEnd()
    {
        int asked = 0;
        QCOMPARE(askUntilItFits(32, 4,
                                [&](std::uint32_t *) {
                                    ++asked;
                                    return Fit::Refused;
                                }),
                 Fit::Refused);
        QCOMPARE(asked, 1);
    }
};

KOLM_TEST_MAIN(TestGrowingAnswer)
#include "tst_growing_answer.moc"
