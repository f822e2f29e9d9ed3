#include "checks/check_model.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

using namespace checks;

namespace {

Check row(const char *id, Surface surface = Surface::Card)
{
    Check check;
    check.id = id;
    check.surface = surface;
    return check;
}

QStringList ids(const QAbstractItemModel &model)
{
    QStringList result;
    for (int i = 0; i < model.rowCount(); ++i)
        result.append(model.data(model.index(i, 0), FindingList::Identifier).toString());
    return result;
}

// Which rows came (+) and went (-), in the order in which that happened.
struct Moves
{
    explicit Moves(const QAbstractItemModel &model)
    {
        QObject::connect(&model, &QAbstractItemModel::rowsInserted,
                         [this, &model](const QModelIndex &, int first, int last) {
                             for (int i = first; i <= last; ++i)
                                 list.append('+' + ids(model)[i]);
                         });
        QObject::connect(&model, &QAbstractItemModel::rowsAboutToBeRemoved,
                         [this, &model](const QModelIndex &, int first, int last) {
                             for (int i = first; i <= last; ++i)
                                 list.append('-' + ids(model)[i]);
                         });
        QObject::connect(&model, &QAbstractItemModel::dataChanged,
                         [this, &model](const QModelIndex &first) {
                             list.append('~' + ids(model)[first.row()]);
                         });
    }
    QStringList list;
};

} // namespace

class TestCheckModel : public TestCase
{
    Q_OBJECT

    const Table table_ = {row("a"), row("b", Surface::Own), row("c"), row("d")};

    // "ab" are the findings of these two rows, in this order.
    std::vector<Finding> findings(const QString &letters, const QString &value = {}) const
    {
        std::vector<Finding> result;
        for (const QChar letter : letters) {
            Finding finding{&table_[letter.unicode() - 'a'], {}};
            if (!value.isEmpty())
                finding.evidence = {{"value", value}};
            result.push_back(finding);
        }
        return result;
    }

private slots:
    void aRowTellsEverythingThatAPageNeeds()
    {
        Check check = row("ports");
        check.severity = Severity::Error;
        check.blocks = Stage::Server;
        check.title = "%1 is in the way";
        check.text = "%2 holds %1, 100% of it; %0 and %3 stay";
        check.action = {Action::OpenUrl, "Look", "ms-settings:network"};
        FindingList list;
        list.show({{&check, {{"Port", "%2"}, {"Program", "node.exe"}}}});
        QCOMPARE(list.rowCount(), 1);
        QCOMPARE(list.count(), 1);
        QCOMPARE(list.rowCount(list.index(0)), 0);
        QMap<QByteArray, QVariant> values;
        const QHash<int, QByteArray> names = list.roleNames();
        for (auto it = names.begin(); it != names.end(); ++it)
            values[it.value()] = list.data(list.index(0), it.key());
        const QMap<QByteArray, QVariant> expected = {
            {"identifier", "ports"},
            {"severity", int(Severity::Error)},
            {"title", "%2 is in the way"},
            {"text", "node.exe holds %2, 100% of it; %0 and %3 stay"},
            {"evidence", QVariantList{QVariantMap{{"label", "Port"}, {"value", "%2"}},
                                      QVariantMap{{"label", "Program"}, {"value", "node.exe"}}}},
            {"action", int(Action::OpenUrl)},
            {"actionLabel", "Look"},
            {"blocks", int(Stage::Server)},
            {"surface", int(Surface::Card)}};
        QCOMPARE(values, expected);
        QVERIFY(!list.data(list.index(0), Qt::DisplayRole).isValid());
        QVERIFY(!list.data(QModelIndex(), FindingList::Title).isValid());
    }

    void whatIsNotThereIsEmpty()
    {
        const Check check = row("plain", Surface::Own);
        FindingList list;
        list.show({{&check, {}}});
        QCOMPARE(list.data(list.index(0), FindingList::Blocks).toInt(), -1);
        QCOMPARE(list.data(list.index(0), FindingList::ActionLabel).toString(), QString());
        QCOMPARE(list.data(list.index(0), FindingList::ActionRole).toInt(), int(Action::None));
        QCOMPARE(list.data(list.index(0), FindingList::SurfaceRole).toInt(), int(Surface::Own));
    }

    void onlyWhatChangesMoves_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QStringList>("moves");
        QTest::newRow("nothing") << ""
                                 << "" << QStringList();
        QTest::newRow("the same") << "abc"
                                  << "abc" << QStringList();
        QTest::newRow("one comes in front") << "bc"
                                            << "abc" << QStringList{"+a"};
        QTest::newRow("one comes between") << "ac"
                                           << "abc" << QStringList{"+b"};
        QTest::newRow("one comes last") << "ab"
                                        << "abc" << QStringList{"+c"};
        QTest::newRow("one goes") << "abc"
                                  << "ac" << QStringList{"-b"};
        QTest::newRow("all go") << "ab"
                                << "" << QStringList({"-b", "-a"});
        QTest::newRow("one instead of another") << "ac"
                                                << "bc" << QStringList({"-a", "+b"});
        QTest::newRow("two change places") << "abc"
                                           << "cab" << QStringList({"-c", "+c"});
    }
    void onlyWhatChangesMoves()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        FindingList list;
        list.show(findings(before));
        const Moves moves(list);
        QSignalSpy counts(&list, &FindingList::countChanged);
        list.show(findings(after));
        QTEST(moves.list, "moves");
        QCOMPARE(ids(list).join(""), after);
        QCOMPARE(counts.size(), before.size() == after.size() ? 0 : 1);
    }

    void newEvidenceKeepsTheRow()
    {
        FindingList list;
        list.show(findings("ac", "one"));
        const Moves moves(list);
        list.show(findings("ac", "one"));
        QCOMPARE(moves.list, QStringList());
        list.show(findings("ac", "two"));
        QCOMPARE(moves.list, QStringList({"~a", "~c"}));
        const QVariant evidence = list.data(list.index(1), FindingList::EvidenceRole);
        QCOMPARE(evidence.toList()[0].toMap()["value"].toString(), QString("two"));
    }

    void theWindowShowsWhatHasNoSurfaceOfItsOwn_data()
    {
        QTest::addColumn<QString>("found");
        QTest::addColumn<QString>("foremost");
        QTest::addColumn<QString>("others");
        QTest::newRow("nothing") << ""
                                 << ""
                                 << "";
        QTest::newRow("only one with its own") << "b"
                                               << ""
                                               << "";
        QTest::newRow("one") << "ba"
                             << "a"
                             << "";
        QTest::newRow("several") << "cbad"
                                 << "c"
                                 << "ad";
    }
    void theWindowShowsWhatHasNoSurfaceOfItsOwn()
    {
        QFETCH(QString, found);
        CheckModel model;
        model.showAll(findings(found));
        QCOMPARE(ids(model).join(""), found);
        QTEST(ids(*model.foremost()).join(""), "foremost");
        QTEST(ids(*model.others()).join(""), "others");
    }

    void aRowsActionIsAskedForWhereverItIsShown()
    {
        Table table = {row("a"), row("b")};
        table[0].action = {Action::OpenUrl, "a", "of a"};
        table[1].action = {Action::LaunchSteam, "b"};
        CheckModel model;
        QStringList acted;
        connect(&model, &FindingList::acted, [&](const Action &action) {
            acted << QString("%1 %2").arg(action.kind).arg(action.target);
        });
        model.showAll({{&table[0], {}}, {&table[1], {}}});
        model.act(1);
        model.foremost()->act(0);
        model.others()->act(0);
        model.act(2);
        model.act(-1);
        const QString launch = QString("%1 ").arg(Action::LaunchSteam);
        QCOMPARE(acted, QStringList({launch, QString("%1 of a").arg(Action::OpenUrl), launch}));
    }
};

KOLM_TEST_MAIN(TestCheckModel)
#include "tst_check_model.moc"
