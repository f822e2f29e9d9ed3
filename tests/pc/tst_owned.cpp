#include "pc/owned.h"
#include "tests/support/test_case.h"

#include <QList>

#include <utility>

namespace {

QList<int> closed; // in the order in which they were given back

// Handles that nobody but this test gives out. Two values stand for nothing.
struct Counted
{
    using Handle = int;
    static constexpr int none() { return 0; }
    static bool isValid(int handle) { return handle > 0; }
    static void close(int handle) { closed.append(handle); }
};
using Owner = Owned<Counted>;

struct Object : PointerKind<QList<int> *>
{
    static void close(QList<int> *object) { delete object; }
};

} // namespace

class OwnedTest : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        closed.clear();
    }

    void givesBackWithItself()
    {
        {
            const Owner owner(7);
            QVERIFY(bool(owner));
            QCOMPARE(owner.get(), 7);
            QCOMPARE(closed, QList<int>());
        }
        QCOMPARE(closed, QList<int>{7});
    }

    void givesBackNothingThatIsNotValid()
    {
        {
            const Owner empty;
            const Owner refused(-1);
            QVERIFY(!empty);
            QVERIFY(!refused);
        }
        QCOMPARE(closed, QList<int>());
    }

    void movesToOneOwnerAtATime()
    {
        {
            Owner first(7);
            Owner second(std::move(first));
            Owner third(8);
            third = std::move(second);
            QCOMPARE(closed, QList<int>{8});
            QCOMPARE(third.get(), 7);
        }
        QCOMPARE(closed, (QList<int>{8, 7}));
    }

    void staysWhenItIsMovedToItself()
    {
        Owner owner(7);
        Owner &same = owner;
        owner = std::move(same);
        QCOMPARE(owner.get(), 7);
        QCOMPARE(closed, QList<int>());
    }

    void letsGoWithoutGivingBack()
    {
        {
            Owner owner(7);
            QCOMPARE(owner.release(), 7);
            QVERIFY(!owner);
        }
        QCOMPARE(closed, QList<int>());
    }

    void givesBackTheOldOneForTheNewOne()
    {
        Owner owner(7);
        owner.reset(8);
        QCOMPARE(closed, QList<int>{7});
        QCOMPARE(owner.get(), 8);
        owner.reset();
        QCOMPARE(closed, (QList<int>{7, 8}));
        QVERIFY(!owner);
    }

    void isEmptyForWhoeverPutsAHandleThere()
    {
        {
            Owner owner(7);
            int *const place = owner.put();
            QCOMPARE(closed, QList<int>{7});
            QVERIFY(!owner);
            *place = 8;
            QCOMPARE(owner.get(), 8);
        }
        QCOMPARE(closed, (QList<int>{7, 8}));
    }

    void leadsToAnObject()
    {
        Owned<Object> owner(new QList<int>{1, 2});
        QCOMPARE(owner->size(), 2);
        owner.reset();
        QVERIFY(!owner);
    }
};

KOLM_TEST_MAIN(OwnedTest)
#include "tst_owned.moc"
