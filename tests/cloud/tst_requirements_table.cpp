#include "tests/cloud/update_fixture.h"

#include <QDir>
#include <QFileInfo>

// The table of requirements, as every run fetches it.
class TestRequirementsTable : public UpdateFixture
{
    Q_OBJECT

private slots:
    void theTableIsAskedForAndThenTheVersion()
    {
        check({{"table", shortTable}});
        const QList<Received> table = requestsTo("/orbresource/pc_compare.json");
        QCOMPARE(table.size(), 1);
        QCOMPARE(table[0].method, QByteArray("GET"));
        QCOMPARE(table[0].body, QByteArray());
        const QList<Received> version = requestsTo("/vrmcsys/appstore/getAlvrVerInfo");
        QCOMPARE(version.size(), 1);
        QCOMPARE(version[0].method, QByteArray("POST"));
        QCOMPARE(version[0].headers.value("Content-Type"), QByteArray("text/plain;charset=UTF-8"));
        QCOMPARE(version[0].headers.value("Content-Length"), QByteArray("2"));
        QCOMPARE(version[0].body, QByteArray("{}"));
        QCOMPARE(cloud_->receivedCount(), 2);
        QCOMPARE(readFile("compare.json"), QByteArray("{\"cpu\":{}}"));
        QVERIFY(offers_.isEmpty());
        QCOMPARE(logged(), QStringList());
        QVERIFY(!QFileInfo::exists(download()));
    }

    void theTableGoesWhereTheProgramStarted()
    {
        cloud_->begin(QJsonObject{{"table", shortTable}});
        make(cloud_->host());
        QVERIFY(QDir(dir()).mkdir("other"));
        QVERIFY(QDir::setCurrent(path("other")));
        settle();
        QVERIFY(QDir::setCurrent(dir()));
        QCOMPARE(readFile("compare.json"), QByteArray("{\"cpu\":{}}"));
        QVERIFY(!QFileInfo::exists("other/compare.json"));
    }

    // Eight runs: what one request takes from another is a matter of chance.
    void aTableThatBreaksOffLeavesTheVersionQueryAlone_data()
    {
        QTest::addColumn<QJsonObject>("table");
        for (int i = 0; i < 8; ++i) {
            QTest::addRow("at once %d", i) << QJsonObject{{"size", 4000}, {"cutAfter", 0}};
            QTest::addRow("in the midst %d", i) << QJsonObject{{"size", 4000}, {"cutAfter", 1000}};
            QTest::addRow("no answer %d", i) << QJsonObject{{"raw", "SFRUUC8xLjEgMg=="}};
        }
    }

    void aTableThatBreaksOffLeavesTheVersionQueryAlone()
    {
        QFETCH(QJsonObject, table);
        check(with(newer(), "table", table));
        QCOMPARE(requestsTo("/vrmcsys/appstore/getAlvrVerInfo").size(), 1);
        QCOMPARE(requestsTo("/orbresource/pc_compare.json").size(), 1);
        QCOMPARE(offers_, QStringList("New|false"));
    }

    void aTableThatDoesNotComeLeavesTheOldOne_data()
    {
        QTest::addColumn<QJsonObject>("answer");
        QTest::addColumn<QString>("line");
        QTest::newRow("500")
            << QJsonObject{{"status", 500}, {"body", "broken"}}
            << "Download of https://{host}/orbresource/pc_compare.json failed: Error "
               "transferring https://{host}/orbresource/pc_compare.json - server "
               "replied: Internal Server Error\n";
        QTest::newRow("cut") << QJsonObject{{"size", 4000}, {"cutAfter", 1000}}
                             << "Download of https://{host}/orbresource/pc_compare.json failed: "
                                "Connection closed\n";
        for (const int status : {301, 302, 303, 305, 307, 308}) {
            QTest::addRow("%d", status)
                << QJsonObject{{"status", status},
                               {"headers", QJsonObject{{"Location", "{base}/download/x"}}},
                               {"body", "moved"}}
                << "https://{host}/orbresource/pc_compare.jsonRequest was redirected.\n";
        }
    }

    void aTableThatDoesNotComeLeavesTheOldOne()
    {
        QFETCH(QJsonObject, answer);
        QFETCH(QString, line);
        writeFile("compare.json", "old");
        check({{"table", answer}});
        QCOMPARE(readFile("compare.json"), QByteArray("old"));
        QCOMPARE(logged(), QStringList(line.replace("{host}", cloud_->host())));
        QCOMPARE(cloud_->receivedCount(), 2); // nobody went elsewhere
    }
};

KOLM_TEST_MAIN(TestRequirementsTable)
#include "tst_requirements_table.moc"
