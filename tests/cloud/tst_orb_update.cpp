#include "peers/cloud_sim/pattern.h"
#include "tests/cloud/update_fixture.h"

#include <QFileInfo>
#include <QNetworkReply>

// The version that is asked for and offered.
class TestOrbUpdate : public UpdateFixture
{
    Q_OBJECT

private slots:
    void theSignalsAndMethodsStandInTheirOrder()
    {
        const QMetaObject &meta = ORBUpdate::staticMetaObject;
        QStringList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            methods << QString::fromLatin1(meta.method(i).typeName()) + ' ' +
                           QString::fromLatin1(meta.method(i).methodSignature());
        QCOMPARE(methods,
                 QStringList({"void updateSignal(QString,bool)", "void processStatus(float)",
                              "void downExeFinish()", "bool setup()", "QString version()"}));
    }

    void theVersionIsShownWithThreeParts()
    {
        make("127.0.0.1:9/@none");
        QCOMPARE(update_->version(), "v" + QString(KOLM_VERSION).section('.', 0, 2));
    }

    void aNewerVersionIsFetchedAndThenOffered()
    {
        check(with(newer(), "installer", {{"size", 300000}}));
        QCOMPARE(offers_, QStringList("New|false"));
        QCOMPARE(finished_, 1);
        QCOMPARE(loggedCount("start update"), 1);
        QCOMPARE(readFile("data/download/Setup.exe"), pattern(0, 300000));
        QVERIFY(!progress_.isEmpty());
        QCOMPARE(progress_.last(), 1.0f);
        QVERIFY(std::is_sorted(progress_.begin(), progress_.end()));
        QVERIFY(progress_.first() >= 0);
        const QList<Received> request = requestsTo("/download/Setup.exe");
        QCOMPARE(request.size(), 1);
        QCOMPARE(request[0].method, QByteArray("GET"));
    }

    void onlyTheNumberOneMakesAnUpdateMandatory_data()
    {
        QTest::addColumn<QJsonValue>("forced");
        QTest::addColumn<bool>("isForce");
        QTest::newRow("0") << QJsonValue(0) << false;
        QTest::newRow("1") << QJsonValue(1) << true;
        QTest::newRow("2") << QJsonValue(2) << false;
        QTest::newRow("-1") << QJsonValue(-1) << false;
        QTest::newRow("true") << QJsonValue(true) << false;
        QTest::newRow("\"1\"") << QJsonValue("1") << false;
        QTest::newRow("absent") << QJsonValue(QJsonValue::Undefined) << false;
    }

    void onlyTheNumberOneMakesAnUpdateMandatory()
    {
        QFETCH(QJsonValue, forced);
        QFETCH(bool, isForce);
        check(newer({{"forced", forced}}));
        QCOMPARE(offers_, QStringList(isForce ? "New|true" : "New|false"));
    }

    void theNoteGetsItsLineBreaks_data()
    {
        QTest::addColumn<QString>("note");
        QTest::addColumn<QString>("shown");
        QTest::newRow("two lines") << "First./nSecond."
                                   << "First.<br>Second.";
        QTest::newRow("line feed stays") << "First.\nSecond."
                                         << "First.\nSecond.";
        QTest::newRow("capital stays") << "First./NSecond."
                                       << "First./NSecond.";
        QTest::newRow("twice") << "a/n/nb"
                               << "a<br><br>b";
        QTest::newRow("Chinese") << "新版本/n更快"
                                 << "新版本<br>更快";
        QTest::newRow("empty") << ""
                               << "";
    }

    void theNoteGetsItsLineBreaks()
    {
        QFETCH(QString, note);
        QFETCH(QString, shown);
        check(newer({{"note", note}}));
        QCOMPARE(offers_, QStringList(shown + "|false"));
    }

    void aVersionThatIsNotNewerIsLeftAlone_data()
    {
        QTest::addColumn<QString>("version");
        QTest::newRow("the same") << KOLM_VERSION;
        QTest::newRow("older") << "0.9.15.999";
        QTest::newRow("too short") << "1.1";
        QTest::newRow("leading letter") << "v1.2.0.0";
    }

    void aVersionThatIsNotNewerIsLeftAlone()
    {
        QFETCH(QString, version);
        check(newer({{"version", version}}));
        QVERIFY(offers_.isEmpty());
        QCOMPARE(finished_, 0);
        QCOMPARE(cloud_->receivedCount(), 2);
        QCOMPARE(logged(), QStringList());
        QVERIFY(!QFileInfo::exists(download()));
    }

    void anAnswerThatSaysNoIsLogged_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QStringList>("lines");
        const QString good = "\"data\":{\"url\":\"u\",\"version\":\"9.9.9.9\"}";
        QTest::newRow("errCode 1") << "{" + good + ",\"errCode\":1}"
                                   << QStringList("check version: {" + good + ",\"errCode\":1}");
        QTest::newRow("no errCode")
            << "{" + good + "}" << QStringList("check version: {" + good + "}");
        QTest::newRow("an array") << "[]" << QStringList("check version: {}");
        QTest::newRow("no data") << "{\"errCode\":0}" << QStringList();
        QTest::newRow("HTML") << "<html></html>" << QStringList("json parseError");
    }

    void anAnswerThatSaysNoIsLogged()
    {
        QFETCH(QString, answer);
        QFETCH(QStringList, lines);
        check({{"table", shortTable}, {"version", QJsonObject{{"body", answer}}}});
        QCOMPARE(logged(), lines);
        QVERIFY(offers_.isEmpty());
        QCOMPARE(cloud_->receivedCount(), 2);
    }

    void aVersionInSeveralPiecesIsNotUnderstood()
    {
        QJsonObject answers = newer();
        QJsonObject version = answers["version"].toObject();
        // The rest comes only when nobody waits for it any more.
        version["pieces"] = 3;
        version["gapMilliseconds"] = 600000;
        answers["version"] = version;
        check(answers);
        QCOMPARE(logged(), QStringList("json parseError"));
        QVERIFY(offers_.isEmpty());
    }

    void aVersionQueryThatFailsIsSilent()
    {
        check({{"version", QJsonObject{{"body", "{}"}, {"cutAfter", 0}}}});
        QCOMPARE(logged(), QStringList());
        QVERIFY(offers_.isEmpty());
    }

    void withoutACloudOnlyTheTableIsMissed()
    {
        writeFile("compare.json", "old");
        make("127.0.0.1:1");
        settle();
        QCOMPARE(logged(),
                 QStringList("Download of https://127.0.0.1:1/orbresource/pc_compare.json failed: "
                             "Connection refused\n"));
        QCOMPARE(readFile("compare.json"), QByteArray("old"));
        QVERIFY(offers_.isEmpty());
    }

    void aCloudThatNeverAnswersHoldsUpNothing()
    {
        cloud_->begin("silent");
        make(cloud_->host());
        QTRY_COMPARE(cloud_->receivedCount(), 2);
        QVERIFY(!update_->setup());
        update_.reset();
        QCOMPARE(logged(), QStringList());
    }

    void whatIsUnderWayIsGivenUpWithoutAWord()
    {
        cloud_->begin("silent");
        make(cloud_->host());
        QTRY_VERIFY(!update_->findChildren<QNetworkReply *>().isEmpty());
        update_->abortRequests();
        QVERIFY(update_->findChildren<QNetworkReply *>().isEmpty());
        QCOMPARE(logged(), QStringList());
        QCOMPARE(offers_, QStringList());
        QCOMPARE(finished_, 0);
    }

    void whoeverHasNoValidCertificateIsNotSpokenToIfThatIsWanted()
    {
        cloud_->begin("newer");
        make(cloud_->host(), cloud::PeerCheck::On);
        settle();
        QCOMPARE(cloud_->receivedCount(), 0);
        QCOMPARE(loggedWith("failed: SSL handshake failed"), 1);
        QVERIFY(!QFileInfo::exists("compare.json"));
    }
};

KOLM_TEST_MAIN(TestOrbUpdate)
#include "tst_orb_update.moc"
