#include "tests/qml/dialog_states.h"
#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QDir>

// The list of what was changed outside the program's folder.
class TestChangesPage : public TestCase
{
    Q_OBJECT

    static QList<QQuickItem *> giveBackButtons(Interface &pages)
    {
        QList<QQuickItem *> found;
        for (QQuickItem *item : Interface::shownItems(pages.dialog()->contentItem())) {
            if (item->objectName() == "giveBack")
                found.append(item);
        }
        return found;
    }
    QString fileName(const char *name) const { return dir() + '/' + name; }
    // A list that we cleared, with the drivers that were in it.
    void clearList(Interface &pages, const char *name, const QByteArray &drivers) const
    {
        const QByteArray before = "{\"external_drivers\":" + drivers + "}";
        const QByteArray after = R"({"external_drivers":null})";
        pages.record.beforeEdit({OutsideEdit::DriverList, fileName(name), before, after});
        writeFile(name, after);
    }

private slots:
    void initTestCase() { registerInterface(); }

    void theSystemPageLeadsThere()
    {
        Interface pages;
        showDialog(pages, "system");
        pages.click(pages.inDialog("changes"));
        QCOMPARE(pages.dialogFile(), QString("ChangesPage.qml"));
        QVERIFY(pages.inDialog("empty"));
        QVERIFY(!pages.inDialog("giveBackAll")->property("enabled").toBool());
    }

    void driversOfOthersComeFirst()
    {
        Interface pages;
        clearList(pages, "list", R"(["C:/Tracker"])");
        pages.record.beforeForwardsGo({"PA1 tcp:1 tcp:2"});
        pages.record.beforeEdit(
            {OutsideEdit::ServerSettings, fileName("session.json"), "before", "after"});
        writeFile("session.json", "after");
        showDialog(pages, "changes, none");
        const QStringList texts = pages.dialogTexts();
        const int driver = texts.indexOf(zh("其他程序的SteamVR驱动"));
        QVERIFY(driver >= 0);
        QCOMPARE(QDir::fromNativeSeparators(texts.value(driver + 1)), QString("C:/Tracker"));
        QVERIFY(driver < texts.indexOf(zh("串流服务的设置")));
        QVERIFY(driver < texts.indexOf(zh("其他程序的adb端口转发")));
        QVERIFY(texts.contains("PA1 tcp:1 tcp:2"));
        // Forwards only come back with the tool that made them.
        QCOMPARE(giveBackButtons(pages).size(), 2);
    }

    void oneClickGivesBackOne()
    {
        Interface pages;
        clearList(pages, "list", R"(["C:/Tracker"])");
        clearList(pages, "another list", R"(["C:/Gloves"])");
        showDialog(pages, "changes, none");
        QCOMPARE(giveBackButtons(pages).size(), 2);
        pages.click(giveBackButtons(pages).first());
        QCOMPARE(readFile("another list"), QByteArray(R"({"external_drivers":["C:/Gloves"]})"));
        QCOMPARE(readFile("list"), QByteArray(R"({"external_drivers":null})"));
        pages.settle();
        QCOMPARE(giveBackButtons(pages).size(), 1);
        QVERIFY(!pages.inDialog("failed"));
    }

    void oneClickGivesBackEverything()
    {
        Interface pages;
        clearList(pages, "list", R"(["C:/Tracker"])");
        pages.record.beforeEdit(
            {OutsideEdit::ServerSettings, fileName("session.json"), "before", "after"});
        writeFile("session.json", "after");
        showDialog(pages, "changes, none");
        pages.click(pages.inDialog("giveBackAll"));
        QCOMPARE(readFile("list"), QByteArray(R"({"external_drivers":["C:/Tracker"]})"));
        QCOMPARE(readFile("session.json"), QByteArray("before"));
        pages.settle();
        QCOMPARE(giveBackButtons(pages).size(), 0);
        QVERIFY(!pages.inDialog("giveBackAll")->property("enabled").toBool());
    }

    void whatCannotBeGivenBackNowIsSaid()
    {
        Interface pages;
        pages.record.beforeEdit({OutsideEdit::ServerSettings, fileName("folder"), "before", "a"});
        QVERIFY(QDir(dir()).mkpath("folder/inside"));
        showDialog(pages, "changes, none");
        announce("What was changed cannot be given back now: " + fileName("folder"));
        pages.click(pages.inDialog("giveBackAll"));
        QVERIFY(pages.inDialog("failed"));
        QCOMPARE(giveBackButtons(pages).size(), 1);
    }
};

KOLM_GUI_TEST_MAIN(TestChangesPage)
#include "tst_changes_page.moc"
