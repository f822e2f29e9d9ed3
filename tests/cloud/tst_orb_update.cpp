#include "cloud/orb_update.h"

#include "peers/cloud_sim/pattern.h"
#include "tests/cloud/cloud_peer.h"
#include "tests/support/small_disk.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFileInfo>
#include <QMetaMethod>
#include <QNetworkReply>
#include <QProcess>
#include <QRegularExpression>
#include <QUrl>

namespace {

// Answers to the version query with a newer version and these members beside.
QJsonObject newer(const QJsonObject &members = {})
{
    QJsonObject data{{"version", "9.1.17.500"},
                     {"forced", 0},
                     {"note", "New"},
                     {"url", "{base}/download/Setup.exe"}};
    for (auto it = members.begin(); it != members.end(); ++it)
        data[it.key()] = it.value();
    return {{"version", QJsonObject{{"json", QJsonObject{{"errCode", 0}, {"data", data}}}}}};
}

QJsonObject with(QJsonObject answers, const QString &service, const QJsonObject &answer)
{
    answers[service] = answer;
    return answers;
}

const QJsonObject shortTable{{"body", "{\"cpu\":{}}"}};

} // namespace

class TestOrbUpdate : public TestCase
{
    Q_OBJECT

    std::unique_ptr<CloudPeer> cloud_;
    std::unique_ptr<ORBUpdate> update_;
    QStringList started_;
    QStringList offers_; // "note|true"
    QList<float> progress_;
    int finished_ = 0;

    QString download() const { return path("data/download"); }
    QString installer() const { return download() + "/Setup.exe"; }

    void make(const QString &host, cloud::PeerCheck check = cloud::PeerCheck::Off,
              qint64 longest = 512 << 20)
    {
        update_ = std::make_unique<ORBUpdate>(ORBUpdate::Dependencies{
            host, path("data"), [this](const QString &program) { started_ << program; }, check,
            longest});
        connect(update_.get(), &ORBUpdate::updateSignal, this,
                [this](const QString &note, bool isForce) {
                    offers_ << note + (isForce ? "|true" : "|false");
                });
        connect(update_.get(), &ORBUpdate::processStatus, this,
                [this](float value) { progress_ << value; });
        connect(update_.get(), &ORBUpdate::downExeFinish, this, [this] { ++finished_; });
    }
    // Lets one run's check happen, to its end.
    void check(const QJsonObject &answers)
    {
        cloud_->begin(answers);
        make(cloud_->host());
        settle();
    }
    void settle()
    {
        QTRY_VERIFY_WITH_TIMEOUT(update_->findChildren<QNetworkReply *>().isEmpty(), 60000);
    }
    QList<Received> requestsTo(const QByteArray &target) const
    {
        QList<Received> list = cloud_->received();
        list.erase(std::remove_if(list.begin(), list.end(),
                                  [&](const Received &r) { return r.target != target; }),
                   list.end());
        return list;
    }
    int loggedWith(const QString &text) const { return logged().filter(text).size(); }

private slots:
    void initTestCase()
    {
        cloud_ = std::make_unique<CloudPeer>();
        QVERIFY(cloud_->isUp());
    }
    void cleanupTestCase() { cloud_.reset(); }

    void init()
    {
        TestCase::init();
        started_.clear();
        offers_.clear();
        progress_.clear();
        finished_ = 0;
    }
    void cleanup()
    {
        update_.reset();
        TestCase::cleanup();
    }

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

    void aTableThatCannotBeSavedIsLogged()
    {
        QVERIFY(QDir(dir()).mkdir("compare.json"));
        check({{"table", shortTable}});
        QCOMPARE(logged(), QStringList("down compare.json fail"));
        QVERIFY(QFileInfo("compare.json").isDir());
    }

    void theStandardErrorStreamSaysWhatCannotBeOpened_data()
    {
        QTest::addColumn<QString>("test");
        QTest::addColumn<QString>("file");
        QTest::newRow("table") << "aTableThatCannotBeSavedIsLogged"
                               << "compare.json";
        QTest::newRow("installer") << "aFolderWhereTheInstallerBelongsIsNone"
                                   << "data/download/Setup.exe";
    }
    void theStandardErrorStreamSaysWhatCannotBeOpened()
    {
        QFETCH(QString, test);
        QFETCH(QString, file);
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(), {test});
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitCode(), 0);
        const QString errors = QString::fromLocal8Bit(process.readAllStandardError()).remove('\r');
        const QRegularExpression line("^Could not open \\S.*/" + QRegularExpression::escape(file) +
                                          " for writing: .+$",
                                      QRegularExpression::MultilineOption);
        QVERIFY2(line.match(errors).hasMatch(), qPrintable(errors));
    }

    // What fits a file's buffer takes another way to the disk than what does
    // not.
    void aFullDiskKeepsWhatWasThere_data()
    {
        QTest::addColumn<int>("size");
        QTest::newRow("small") << 100;
        QTest::newRow("large") << 20000;
    }
    void aFullDiskKeepsWhatWasThere()
    {
        QFETCH(int, size);
        const SmallDisk disk(path("data"));
        if (!disk.works())
            QSKIP("This user may not mount a disk.");
        QVERIFY(QDir().mkdir(disk.path() + "/download"));
        QVERIFY(QDir::setCurrent(disk.path()));
        const QByteArray full = pattern(0, size);
        int kept = 0;
        int replaced = 0;
        int offered = 0;
        for (int room = 0; room < 16; ++room) {
            writeFile("data/compare.json", "old");
            QVERIFY(disk.fillUp(room * 4096));
            clearLog();
            offers_.clear();
            check(with(with(newer(), "installer", {{"size", size}}), "table", {{"size", size}}));
            const QByteArray table = readFile("data/compare.json");
            const bool isOld = table == "old";
            QVERIFY2(isOld || table == full, qPrintable(QString::number(table.size())));
            QCOMPARE(loggedCount("down compare.json fail"), isOld ? 1 : 0);
            (isOld ? kept : replaced) += 1;
            const bool isThere = QFileInfo::exists(installer());
            QCOMPARE(offers_.size(), isThere ? 1 : 0);
            if (isThere)
                QCOMPARE(readFile("data/download/Setup.exe"), full);
            offered += isThere;
            QFile::remove(installer());
            disk.makeRoom();
        }
        QVERIFY(QDir::setCurrent(dir()));
        QVERIFY(kept > 0);
        QVERIFY(replaced > 0);
        QVERIFY(offered > 0 && offered < 16);
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

    void anInstallerThatIsThereIsOfferedWithoutADownload()
    {
        QVERIFY(QDir().mkpath(download()));
        writeFile("data/download/Setup.exe", "another build");
        check(newer({{"forced", 1}}));
        QCOMPARE(offers_, QStringList("New|true"));
        QCOMPARE(finished_, 0);
        QVERIFY(progress_.isEmpty());
        QCOMPARE(cloud_->receivedCount(), 2);
        QCOMPARE(readFile("data/download/Setup.exe"), QByteArray("another build"));
    }

    void anInstallerThatDoesNotComeIsNotOffered_data()
    {
        QTest::addColumn<QJsonObject>("answer");
        QTest::addColumn<QString>("line");
        const QString failed = "Download of https://{host}/download/Setup.exe failed: ";
        QTest::newRow("500") << QJsonObject{{"status", 500}}
                             << failed + "Error transferring https://{host}/download/Setup.exe - "
                                         "server replied: Internal Server Error\n";
        QTest::newRow("cut") << QJsonObject{{"size", 300000}, {"cutAfter", 150000}}
                             << failed + "Connection closed\n";
        for (const int status : {301, 302, 303, 305, 307, 308}) {
            QTest::addRow("%d", status)
                << QJsonObject{{"status", status},
                               {"headers", QJsonObject{{"Location", "{base}/download/x"}}},
                               {"body", "moved"}}
                << "Request was redirected.\n";
        }
    }
    void anInstallerThatDoesNotComeIsNotOffered()
    {
        QFETCH(QJsonObject, answer);
        QFETCH(QString, line);
        check(with(newer(), "installer", answer));
        QVERIFY(offers_.isEmpty());
        QCOMPARE(finished_, 1);
        QCOMPARE(logged(), QStringList({"start update", line.replace("{host}", cloud_->host())}));
        QCOMPARE(QDir(download()).entryList(QDir::Files | QDir::Hidden), QStringList());
        QCOMPARE(cloud_->receivedCount(), 3);
        QVERIFY(!update_->setup());
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

    void anInstallerOfUnknownSizeShowsItsProgressBelowZero()
    {
        // Slow enough for more than one sign of life.
        check(with(newer(), "installer",
                   {{"size", 300000}, {"length", false}, {"pieces", 4}, {"gapMilliseconds", 150}}));
        QCOMPARE(offers_, QStringList("New|false"));
        QCOMPARE(readFile("data/download/Setup.exe"), pattern(0, 300000));
        QVERIFY(progress_.size() > 1);
        // At the end it is known.
        QCOMPARE(progress_.last(), 1.0f);
        QVERIFY(std::all_of(progress_.begin(), progress_.end() - 1, [](float v) { return v < 0; }));
    }

    void theInstallerLiesInItsFolderWhateverTheAddressSays_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("name");
        QTest::newRow("up") << "/download/..%2F..%2F..%2Fevil.exe"
                            << "evil.exe";
        QTest::newRow("backslashes") << "/download/..%5C..%5Cevil.exe"
                                     << "evil.exe";
        QTest::newRow("drive") << "/download/C%3Aevil.exe"
                               << "C_evil.exe";
        QTest::newRow("stream") << "/download/a.exe%3Ab"
                                << "a.exe_b";
        QTest::newRow("device") << "/download/NUL.exe"
                                << "_NUL.exe";
        QTest::newRow("no name") << "/download/"
                                 << "KOLM_Streaming_Assistant.exe";
        QTest::newRow("quotes") << "/download/a%22%20-x%20%22.exe"
                                << "a_ -x _.exe";
        QTest::newRow("long") << "/download/" + QString(300, 'a') << QString(120, 'a');
    }
    void theInstallerLiesInItsFolderWhateverTheAddressSays()
    {
        QFETCH(QString, address);
        QFETCH(QString, name);
        check(newer({{"url", "{base}" + address}}));
        QCOMPARE(offers_.size(), 1);
        QCOMPARE(QDir(download()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList(name));
        QVERIFY(update_->setup());
        QCOMPARE(started_, QStringList(download() + '/' + name));
    }

    void onlyTheNetIsAskedForTheInstaller_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("file") << QUrl::fromLocalFile(QCoreApplication::applicationFilePath())
                                     .toString(QUrl::FullyEncoded);
        QTest::newRow("resource") << "qrc:/qt-project.org/qmime/packages/freedesktop.org.xml";
        QTest::newRow("data") << "data:,x";
        QTest::newRow("empty") << "";
        QTest::newRow("relative") << "download/Setup.exe";
    }
    void onlyTheNetIsAskedForTheInstaller()
    {
        QFETCH(QString, url);
        check(newer({{"url", url}}));
        QVERIFY(offers_.isEmpty());
        QCOMPARE(finished_, 1);
        QCOMPARE(logged().last(),
                 QString("Download of %1 failed: not an address on the net\n").arg(url));
        QCOMPARE(QDir(download()).entryList(QDir::Files), QStringList());
    }

    void aLongerInstallerThanAllowedIsNotTaken()
    {
        cloud_->begin(with(newer(), "installer", {{"size", 40 << 20}}));
        make(cloud_->host(), cloud::PeerCheck::Off, 1 << 20);
        settle();
        QVERIFY(offers_.isEmpty());
        QCOMPARE(finished_, 1);
        QCOMPARE(loggedWith("failed: Operation canceled"), 1);
        QCOMPARE(QDir(download()).entryList(QDir::Files), QStringList());
    }

    void aFolderWhereTheInstallerBelongsIsNone()
    {
        QVERIFY(QDir().mkpath(installer()));
        check(newer());
        QVERIFY(offers_.isEmpty());
        QCOMPARE(finished_, 1);
        QVERIFY(!update_->setup());
    }

    void setupStartsTheInstallerOnce()
    {
        check(newer());
        QVERIFY(update_->setup());
        QCOMPARE(started_, QStringList(installer()));
        QVERIFY(!update_->setup());
        QCOMPARE(started_.size(), 1);
    }

    void withoutAnInstallerSetupFailsForGood()
    {
        check(newer());
        QVERIFY(QFile::rename(installer(), path("away")));
        QVERIFY(!update_->setup());
        QVERIFY(QFile::rename(path("away"), installer()));
        QVERIFY(!update_->setup());
        QVERIFY(started_.isEmpty());
    }

    void withoutAnUpdateSetupFails()
    {
        make("127.0.0.1:9/@none");
        QVERIFY(!update_->setup());
        QVERIFY(started_.isEmpty());
    }
};

KOLM_TEST_MAIN(TestOrbUpdate)
#include "tst_orb_update.moc"
