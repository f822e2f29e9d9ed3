#include "tests/cloud/cloud_peer.h"
#include "tests/e2e/program.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>

// The program and the vendor cloud.
class TestCloud : public TestCase
{
    Q_OBJECT

    std::unique_ptr<CloudPeer> cloud_;

    // Starts it with a cloud that answers so. Slower than other programs here:
    // the last batch has less than three of its seconds, and real TLS takes real time.
    std::unique_ptr<Program> started(const QString &answers)
    {
        cloud_->begin(answers);
        auto program = std::make_unique<Program>(dir(), "first-run");
        program->environment.insert("SIMPC_CLOUD_HOST", cloud_->host());
        program->environment.insert("SIMPC_SPEED", "1");
        QFile::remove(program->work() + "/compare.json");
        return program->start() ? std::move(program) : nullptr;
    }

private slots:
    void initTestCase()
    {
        cloud_ = std::make_unique<CloudPeer>();
        QVERIFY(cloud_->isUp());
    }
    void cleanupTestCase() { cloud_.reset(); }

    void aRunFetchesTheTableAndReportsItself()
    {
        const auto program = started("normal");
        QVERIFY(program);
        QTRY_COMPARE_WITH_TIMEOUT(cloud_->receivedCount(), 2, 30000);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(program->work() + "/compare.json"), 30000);
        QVERIFY(program->waitForOutput("first frame"));
        QCOMPARE(program->close(), 0);
        QVERIFY(program->json(program->work() + "/compare.json").contains("graphics"));

        const QList<Received> requests = cloud_->received();
        QCOMPARE(requests.size(), 3);
        QCOMPARE(requests[2].target, QByteArray("/vrmcsys/datacenter/streaming_data_upload"));
        const QJsonArray batch = QJsonDocument::fromJson(requests[2].body).array();
        QVERIFY(batch.size() >= 2);
        QCOMPARE(batch.first().toObject()["eventId"].toString(),
                 QString("streamingAssistant_streaming_streamingType_0_0_page_view"));
        const QJsonObject last = batch.last().toObject();
        QCOMPARE(last["eventId"].toString(),
                 QString("streamingAssistant_streaming_0_0_0_module_pend"));
        QVERIFY(last["extraData"].toObject()["duration"].isDouble());
        const QStringList keys = last["defaultData"].toObject().keys();
        QCOMPARE(keys,
                 QStringList({"GUID", "cpu", "deciveSN", "discreteGraphics", "integratedGraphics",
                              "os", "ram", "streamingAssistantVersion", "vram"}));
        QVERIFY(!program->log().contains("Critical:"));
    }

    void whoWantsNoUsageEventsSendsNone()
    {
        cloud_->begin("normal");
        Program program(dir(), "first-run");
        program.environment.insert("SIMPC_CLOUD_HOST", cloud_->host());
        program.environment.insert("SIMPC_SPEED", "1");
        QVERIFY(QDir().mkpath(program.dataDir()));
        writeFile(QDir(dir()).relativeFilePath(program.dataDir() + "/usage.json"),
                  "{\"usageEvents\": false}");
        QVERIFY(program.start());
        QTRY_COMPARE_WITH_TIMEOUT(cloud_->receivedCount(), 2, 30000);
        QVERIFY(program.waitForOutput("first frame"));
        QCOMPARE(program.close(), 0);
        QCOMPARE(cloud_->receivedCount(), 2);
    }

    void aNewerVersionIsMadeReady()
    {
        const auto program = started("newer");
        QVERIFY(program);
        const QString installer = program->dataDir() + "/download/KOLM_Setup_9.1.17.exe";
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(installer), 30000);
        QCOMPARE(program->read(installer).size(), 300000);
        QVERIFY(program->log().contains("]:start update"));
        QVERIFY(program->waitForOutput("first frame"));
        QCOMPARE(program->close(), 0);
    }

    void aCloudThatNeverAnswersKeepsNobodyFromClosing()
    {
        const auto program = started("silent");
        QVERIFY(program);
        QTRY_COMPARE_WITH_TIMEOUT(cloud_->receivedCount(), 2, 30000);
        QVERIFY(program->waitForOutput("first frame"));
        QCOMPARE(program->close(), 0);
        QCOMPARE(cloud_->receivedCount(), 3);
        QCOMPARE(program->log().count("error evnetid: ["), 1);
        QCOMPARE(program->log().count("] json parse fail"), 1);
    }

    void aCloudThatGoesAwayIsNoHindrance()
    {
        const auto program = started("normal");
        QVERIFY(program);
        QVERIFY(program->waitForOutput("first frame"));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(program->work() + "/compare.json"), 30000);
        cloud_.reset();
        QCOMPARE(program->close(), 0);
        QCOMPARE(program->log().count("error evnetid: ["), 1);
        cloud_ = std::make_unique<CloudPeer>();
        QVERIFY(cloud_->isUp());
    }
};

KOLM_TEST_MAIN(TestCloud)
#include "tst_cloud.moc"
