#include "tests/cloud/cloud_peer.h"
#include "tests/e2e/program.h"
#include "tests/hostile/cloud_attacks.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QTcpServer>

// A cloud that means harm, against the real program.
class TestHostileCloud : public TestCase
{
    Q_OBJECT

    std::unique_ptr<CloudPeer> cloud_;

    // The most memory that the program ever had, in KiB.
    static qint64 peakOf(const Program &program)
    {
        QFile file(QString("/proc/%1/status").arg(program.pid()));
        if (!file.open(QIODevice::ReadOnly))
            return -1;
        const QByteArray status = file.readAll();
        const int at = status.indexOf("VmHWM:");
        return status.mid(at + 6, status.indexOf("kB", at) - at - 6).trimmed().toLongLong();
    }

private slots:
    void initTestCase()
    {
        cloud_ = std::make_unique<CloudPeer>();
        QVERIFY(cloud_->isUp());
    }
    void cleanupTestCase() { cloud_.reset(); }

    void nothingComesOfIt_data() { addCloudAttacks(); }

    void nothingComesOfIt()
    {
        QFETCH(QJsonObject, answers);
        QFETCH(QString, end);
        cloud_->begin(answers);
        Program program(dir(), "first-run");
        program.environment.insert("SIMPC_CLOUD_HOST", cloud_->host());
        QVERIFY(program.start());
        QTRY_VERIFY_WITH_TIMEOUT(cloud_->receivedCount() >= 2, 30000);
        QVERIFY(program.waitForOutput("first frame"));
        QTRY_VERIFY_WITH_TIMEOUT(program.log().contains(end), 10000);
        const qint64 peak = peakOf(program);
        QVERIFY2(peak > 0 && peak < 400 * 1024, qPrintable(QString::number(peak)));
        QCOMPARE(program.close(), 0);
        // Each of the three requests, and the installer, once.
        QVERIFY2(cloud_->receivedCount() <= 4,
                 qPrintable(QString::number(cloud_->receivedCount())));
        QCOMPARE(QDir(program.dataDir() + "/download").entryList(QDir::Files | QDir::Hidden),
                 QStringList());
        QVERIFY(!program.journal().join('\n').contains("download"));
    }

    void whoListensWhereACloudCouldBeIsNotFound()
    {
        QTcpServer listener;
        if (!listener.listen(QHostAddress::LocalHost, 18443))
            QSKIP("Another cloud is here.");
        Program program(dir(), "first-run");
        program.environment.remove("SIMPC_CLOUD_HOST");
        QVERIFY(program.start());
        QVERIFY(program.waitForOutput("first frame"));
        QCOMPARE(program.close(), 0);
        QVERIFY(!listener.waitForNewConnection(0));
        QVERIFY(!program.log().contains("error evnetid"));
    }

    void aLinkInTheDownloadFolderLeadsNowhere()
    {
        cloud_->begin("newer");
        Program program(dir(), "first-run");
        const QString installer = program.dataDir() + "/download/KOLM_Setup_9.1.17.exe";
        QVERIFY(QDir().mkpath(program.dataDir() + "/download"));
        QVERIFY(QFile::link(path("precious"), installer));
        program.environment.insert("SIMPC_CLOUD_HOST", cloud_->host());
        QVERIFY(program.start());
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(installer), 30000);
        QVERIFY(!QFile::exists("precious"));
        QVERIFY(program.waitForOutput("first frame"));
        QCOMPARE(program.close(), 0);
    }
};

KOLM_TEST_MAIN(TestHostileCloud)
#include "tst_hostile_cloud.moc"
