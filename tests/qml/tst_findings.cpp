#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

using namespace checks;

namespace {

// What the program knows nothing of: a check that somebody adds.
Check newCheck(const char *id)
{
    Check check;
    check.id = id;
    check.title = "The lamp is off";
    check.text = "Nobody sees anything. Switch %1 on.";
    return check;
}

Finding found(const Check &check)
{
    return {&check, {{"lamp", "the lamp"}}};
}

} // namespace

// Findings that have no surface of their own: nothing of the pages is made for
// any one of them.
class TestFindings : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void withoutFindingsThereIsNoCard()
    {
        Interface pages;
        QVERIFY(pages.load());
        pages.settle();
        QVERIFY(!card(pages, "foremost"));
        QVERIFY(pages.shown("steps"));
    }

    void theForemostIsACardOfTheHeadset()
    {
        const Check lamp = newCheck("lamp");
        const Check other = newCheck("other");
        Interface pages;
        QVERIFY(pages.load());
        pages.checks.showAll({found(lamp), found(other)});
        pages.settle();
        const QQuickItem *shown = card(pages, "foremost");
        QVERIFY(shown);
        QCOMPARE(shown->property("title").toString(), QString("The lamp is off"));
        QCOMPARE(shown->property("text").toString(),
                 QString("Nobody sees anything. Switch the lamp on."));
        QCOMPARE(pages.item("foremost")->property("count").toInt(), 1);
        // It says what to do; the general advice steps back.
        QVERIFY(!pages.shown("steps"));
    }

    void whatHasItsOwnSurfaceIsNoCard()
    {
        Check lamp = newCheck("lamp");
        lamp.surface = Surface::Own;
        Interface pages;
        QVERIFY(pages.load());
        pages.checks.showAll({found(lamp)});
        pages.settle();
        QVERIFY(!card(pages, "foremost"));
        QVERIFY(pages.shown("steps"));
    }

    void theButtonAsksForTheAction()
    {
        Check lamp = newCheck("lamp");
        lamp.action = {Action::OpenUrl, "Switch it on", "ms-settings:lamp"};
        Interface pages;
        QVERIFY(pages.load());
        QStringList targets;
        connect(&pages.checks, &CheckModel::acted,
                [&](const Action &action) { targets << action.target; });
        pages.checks.showAll({found(lamp)});
        pages.settle();
        pages.click(pages.button("Switch it on", pages.item("foremost")));
        QCOMPARE(targets, QStringList{"ms-settings:lamp"});
    }

    void withoutAnActionThereIsNoButton()
    {
        const Check lamp = newCheck("lamp");
        Interface pages;
        QVERIFY(pages.load());
        pages.checks.showAll({found(lamp)});
        pages.settle();
        QVERIFY(card(pages, "foremost"));
        for (const QQuickItem *item : Interface::shownItems(pages.item("foremost")))
            QVERIFY(item->objectName() != "findingAction");
    }

    void theIconSaysHowGraveItIs_data()
    {
        QTest::addColumn<int>("severity");
        QTest::addColumn<QString>("icon");
        QTest::newRow("hint") << int(Severity::Hint) << "orb_tips.png";
        QTest::newRow("warning") << int(Severity::Warning) << "orb_attention.png";
        QTest::newRow("error") << int(Severity::Error) << "orb_fail.png";
    }

    void theIconSaysHowGraveItIs()
    {
        QFETCH(int, severity);
        Check lamp = newCheck("lamp");
        lamp.severity = static_cast<Severity>(severity);
        Interface pages;
        QVERIFY(pages.load());
        pages.checks.showAll({found(lamp)});
        pages.settle();
        QStringList icons;
        for (const QQuickItem *item : Interface::shownItems(pages.item("foremost"))) {
            if (item->inherits("QQuickImage"))
                icons << item->property("source").toUrl().fileName();
        }
        QFETCH(QString, icon);
        QCOMPARE(icons, QStringList{icon});
    }

    void theCardGoesWithItsFinding()
    {
        const Check lamp = newCheck("lamp");
        Interface pages;
        QVERIFY(pages.load());
        pages.checks.showAll({found(lamp)});
        pages.settle();
        QVERIFY(card(pages, "foremost"));
        pages.checks.showAll({});
        pages.settle();
        QVERIFY(!card(pages, "foremost"));
        QVERIFY(pages.shown("steps"));
    }

    // Whoever is at its button stays there.
    void aCardOutlivesNewEvidence()
    {
        const Check lamp = newCheck("lamp");
        Interface pages;
        QVERIFY(pages.load());
        pages.checks.showAll({found(lamp)});
        pages.settle();
        const QQuickItem *before = card(pages, "foremost");
        pages.checks.showAll({{&lamp, {{"lamp", "another lamp"}}}});
        pages.settle();
        QCOMPARE(card(pages, "foremost"), before);
        QCOMPARE(before->property("text").toString(),
                 QString("Nobody sees anything. Switch another lamp on."));
    }

    void theOthersAreInTheDetails()
    {
        const Check first = newCheck("first");
        Check second = newCheck("second");
        second.title = "The second";
        Interface pages;
        QVERIFY(pages.load());
        pages.orb.becomeConnected(true);
        pages.window()->setProperty("ispullDown", true);
        pages.checks.showAll({found(first)});
        pages.settle();
        QVERIFY(!pages.shown("otherFindings"));
        pages.checks.showAll({found(first), found(second)});
        pages.settle();
        QVERIFY(pages.shown("otherFindings"));
        const QQuickItem *shown = card(pages, "otherFindings");
        QVERIFY(shown);
        QCOMPARE(shown->property("title").toString(), QString("The second"));
    }

    void aPageIsOpenedOnRequest()
    {
        Interface pages;
        pages.realDialogs = false;
        QVERIFY(pages.load());
        emit pages.checks.pageWanted("SystemInfoPage");
        pages.settle();
        QVERIFY(pages.dialog());
        QCOMPARE(pages.dialogFile(), QString("SystemInfoPage.qml"));
    }

    void theWindowDoesWithoutChecks()
    {
        Interface pages;
        pages.hasChecks = false;
        QVERIFY(pages.load());
        pages.settle();
        QVERIFY(!card(pages, "foremost"));
        QVERIFY(pages.shown("steps"));
    }

private:
    static QQuickItem *card(const Interface &pages, const char *place)
    {
        QQuickItem *list = pages.item(place);
        for (QQuickItem *item : list ? Interface::shownItems(list) : QList<QQuickItem *>()) {
            if (item->objectName() == "finding")
                return item;
        }
        return nullptr;
    }
};

KOLM_GUI_TEST_MAIN(TestFindings)
#include "tst_findings.moc"
