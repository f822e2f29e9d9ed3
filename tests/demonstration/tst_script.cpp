#include "controller/connection_stages.h"
#include "demonstration/script.h"
#include "tests/demonstration/fake_screen.h"
#include "tests/support/test_case.h"

#include <QSet>

#include <functional>

namespace {

struct Verb
{
    const char *line;
    const char *deed; // nothing is done at the screen if empty
    const char *answer;
};

// On a screen with two items called `close`.
const std::vector<Verb> verbs = {
    {"click close", "click close 1", "ok"},
    {"click close 2", "click close 2", "ok"},
    {"click   close   2", "click close 2", "ok"},
    {"where close", "", "at 10 20"},
    {"where close 2", "", "at -5 7"},
    {"key Shift+Tab", "key Shift+Tab", "ok"},
    {"type The picture is sharp.", "type The picture is sharp.", "ok"},
    {"type  a  b", "type  a  b", "ok"},
    {"activate", "activate", "ok"},
    {"minimise", "minimise", "ok"},
    {"hide", "hide", "ok"},
    {"show", "show", "ok"},
    {"picture /tmp/a b.png", "picture /tmp/a b.png", "ok"},
    {"frames", "frames", "frames 12"},
};

// These are no verbs.
const QStringList otherVerbs = {"wait", "until", "close"};

struct Case
{
    const char *line;
    // Lets it hold, after it did not.
    std::function<void(FakeScreen &, ConnectionStages &)> happen;
};

Case stage(const char *line, int count)
{
    return {line, [count](FakeScreen &, ConnectionStages &stages) {
                stages.update({count > 0, count > 1, count > 2, count > 3, count > 4},
                              QDateTime({2024, 5, 17}, {14, 3}));
            }};
}

const std::vector<Case> cases = {
    {"shown close", [](FakeScreen &screen, ConnectionStages &) { screen.items["close 1"] = {}; }},
    {"shown close 2", [](FakeScreen &screen, ConnectionStages &) { screen.items["close 2"] = {}; }},
    {"hidden dim", [](FakeScreen &screen, ConnectionStages &) { screen.items.remove("dim 1"); }},
    {"dialog SettingPage",
     [](FakeScreen &screen, ConnectionStages &) { screen.openDialog = "SettingPage"; }},
    {"nodialog", [](FakeScreen &screen, ConnectionStages &) { screen.openDialog.clear(); }},
    {"toast", [](FakeScreen &screen, ConnectionStages &) { screen.toastIsShown = true; }},
    {"toast gone", [](FakeScreen &screen, ConnectionStages &) { screen.toastIsShown = false; }},
    stage("steam", 1),
    stage("steamvr", 2),
    stage("server", 3),
    stage("headset", 4),
    stage("linked", 5),
};

// Why the line means nothing; empty when it does mean something.
QString reason(const QString &line, const script::Scene &scene)
{
    const script::Step step = script::read(line, scene);
    const auto *senseless = std::get_if<script::Senseless>(&step);
    return senseless ? senseless->reason : QString();
}

} // namespace

class TestScript : public TestCase
{
    Q_OBJECT

private slots:
    void verbIsCarriedOutAtTheScreen_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("deed");
        QTest::addColumn<QString>("answer");
        for (const Verb &row : verbs)
            QTest::newRow(row.line) << row.line << row.deed << row.answer;
    }

    void verbIsCarriedOutAtTheScreen()
    {
        QFETCH(QString, line);
        QFETCH(QString, deed);
        QFETCH(QString, answer);
        FakeScreen screen;
        screen.items = {{"close 1", {10, 20}}, {"close 2", {-5, 7}}};
        screen.frames = 12;
        const script::Step step = script::read(line, {screen});
        const auto *act = std::get_if<script::Act>(&step);
        QVERIFY(act);
        QVERIFY(!act->ready || act->ready());
        QCOMPARE(screen.deeds, QStringList());
        const Reply reply = act->act();
        QVERIFY(reply.done);
        QCOMPARE(reply.text, answer);
        QCOMPARE(screen.deeds.join('|'), deed);
    }

    void whatTheScreenRefusesIsRefused_data()
    {
        QTest::addColumn<QString>("line");
        for (const char *line : {"key Fooo", "type a", "picture /nowhere/a.png"})
            QTest::newRow(line) << line;
    }

    void whatTheScreenRefusesIsRefused()
    {
        QFETCH(QString, line);
        FakeScreen screen;
        screen.reply = Reply::cannot("it is broken");
        const Reply reply = std::get<script::Act>(script::read(line, {screen})).act();
        QVERIFY(!reply.done);
        QCOMPARE(reply.text, QString("it is broken"));
    }

    void itemThatIsNotShownCannotBeWorked_data()
    {
        QTest::addColumn<QString>("line");
        for (const char *line : {"click close 2", "click dim", "where close 2"})
            QTest::newRow(line) << line;
    }

    void itemThatIsNotShownCannotBeWorked()
    {
        QFETCH(QString, line);
        FakeScreen screen;
        screen.items = {{"close 1", {10, 20}}};
        const Reply reply = std::get<script::Act>(script::read(line, {screen})).act();
        QVERIFY(!reply.done);
        QCOMPARE(reply.text, QString("nothing of that name is shown"));
    }

    void pictureNeedsAllWindows()
    {
        FakeScreen screen;
        screen.complete = false;
        const auto act = std::get<script::Act>(script::read("picture a.png", {screen}));
        QVERIFY(!act.ready());
        screen.complete = true;
        QVERIFY(act.ready());
    }

    void pauseCountsSeconds()
    {
        FakeScreen screen;
        QCOMPARE(std::get<script::Pause>(script::read("wait 1.25", {screen})).milliseconds, 1250);
        QCOMPARE(std::get<script::Pause>(script::read("wait 0", {screen})).milliseconds, 0);
    }

    void programIsClosed()
    {
        FakeScreen screen;
        QVERIFY(std::holds_alternative<script::Close>(script::read("close", {screen})));
    }

    void conditionHoldsOnceItIsSo_data()
    {
        QTest::addColumn<int>("index");
        for (size_t i = 0; i < cases.size(); ++i)
            QTest::newRow(cases[i].line) << int(i);
    }

    void conditionHoldsOnceItIsSo()
    {
        QFETCH(int, index);
        const Case &row = cases[size_t(index)];
        FakeScreen screen;
        settle(screen, row.line);
        ConnectionStages stages;
        const auto act =
            std::get<script::Act>(script::read(QString("until ") + row.line, {screen, &stages}));
        QVERIFY(!act.ready());
        row.happen(screen, stages);
        QVERIFY(act.ready());
        // There is nothing else to do.
        QCOMPARE(act.act().text, QString("ok"));
        QCOMPARE(screen.deeds, QStringList());
    }

    void stageBeforeTheOneAskedForIsNotEnough()
    {
        const QStringList names = {"steam", "steamvr", "server", "headset", "linked"};
        FakeScreen screen;
        ConnectionStages stages;
        for (int reached = 1; reached < names.size(); ++reached) {
            stage("", reached).happen(screen, stages);
            const auto act =
                std::get<script::Act>(script::read("until " + names[reached], {screen, &stages}));
            QVERIFY2(!act.ready(), qPrintable(names[reached]));
        }
    }

    void withoutAToastNoConditionOfOneHolds()
    {
        FakeScreen screen;
        QVERIFY(!std::get<script::Act>(script::read("until toast", {screen})).ready());
        QVERIFY(!std::get<script::Act>(script::read("until toast gone", {screen})).ready());
    }

    void lineThatMeansNothingIsExplained_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("reason");
        const QString noWord = "there is no such word";
        const QString noCondition = "there is no such condition";
        const auto hasToBe = [](const QString &pattern) {
            return QString("it has to be \"%1\"").arg(pattern);
        };
        const QList<QPair<QString, QString>> rows = {
            {"dance", noWord},
            {"waiting 5", noWord},
            {"Close", noWord},
            {"wait", hasToBe("wait SECONDS")},
            {"wait soon", hasToBe("wait SECONDS")},
            {"wait -1", hasToBe("wait SECONDS")},
            {"wait 1 2", hasToBe("wait SECONDS")},
            {"click", hasToBe("click NAME")},
            {"click close 0", hasToBe("click NAME")},
            {"click close two", hasToBe("click NAME")},
            {"click close 1 2", hasToBe("click NAME")},
            {"where", hasToBe("where NAME")},
            {"key", hasToBe("key KEYS")},
            {"type", hasToBe("type TEXT")},
            {"picture", hasToBe("picture FILE")},
            {"minimise now", hasToBe("minimise")},
            {"close it", hasToBe("close")},
            {"until", hasToBe("until CONDITION")},
            {"until toste", noCondition},
            {"until Toast", noCondition},
            {"until shown", hasToBe("until shown NAME")},
            {"until shown close 0", hasToBe("until shown NAME")},
            {"until dialog", hasToBe("until dialog FILE")},
            {"until nodialog SettingPage", hasToBe("until nodialog")},
            {"until toast soon", hasToBe("until toast")},
            {"until linked twice", hasToBe("until linked")},
        };
        for (const auto &row : rows)
            QTest::newRow(qPrintable(row.first)) << row.first << row.second;
    }

    void lineThatMeansNothingIsExplained()
    {
        QFETCH(QString, line);
        QFETCH(QString, reason);
        FakeScreen screen;
        const ConnectionStages stages;
        QCOMPARE(::reason(line, {screen, &stages}), reason);
        QCOMPARE(screen.deeds, QStringList());
    }

    void secondCopyPrintsNoProgress()
    {
        FakeScreen screen;
        for (const char *name : {"steam", "steamvr", "server", "headset", "linked"})
            QCOMPARE(reason(QString("until ") + name, {screen}),
                     QString("there is no such condition"));
        QCOMPARE(reason("until shown confirm", {screen}), QString());
    }

    // A new row of the tables gets one here.
    void everyRowIsTried()
    {
        QSet<QString> tried(otherVerbs.begin(), otherVerbs.end());
        for (const Verb &row : verbs)
            tried.insert(QString(row.line).section(' ', 0, 0));
        QSet<QString> known;
        for (const script::Verb &verb : script::verbs())
            known.insert(verb.name);
        QCOMPARE(tried, known);

        tried.clear();
        known.clear();
        for (const Case &row : cases)
            tried.insert(row.line == QByteArray("toast gone")
                             ? row.line
                             : QString(row.line).section(' ', 0, 0));
        for (const script::Condition &condition : script::conditions())
            known.insert(condition.name);
        QCOMPARE(tried, known);
    }

    void tablesAreThoseOfTheReadme()
    {
        QFile file(KOLM_SOURCE_DIR "/demonstration/README.md");
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString readme = QString::fromUtf8(file.readAll());
        QVERIFY2(readme.contains("\n\n" + script::tables() + "\n"),
                 qPrintable("put this into demonstration/README.md:\n" + script::tables()));
    }

private:
    // A screen on which nothing of `cases` holds.
    static void settle(FakeScreen &screen, const QString &line)
    {
        screen.items["dim 1"] = {};
        screen.openDialog = "AnotherPage";
        screen.toastIsShown = line == "toast gone";
    }
};

KOLM_TEST_MAIN(TestScript)
#include "tst_script.moc"
