#include "base/manual_clock.h"
#include "cloud/http_manager.h"
#include "cloud/orb_update.h"
#include "tests/cloud/cloud_test.h"
#include "tests/cloud/hostile_answers.h"
#include "tests/cloud/memory.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonDocument>
#include <QNetworkReply>

namespace {

constexpr qint64 memoryLimit = 64LL << 20;

} // namespace

// Whatever a cloud answers, it gets no farther than it may.
class TestHostileReplies : public CloudTest
{
    Q_OBJECT

private slots:
    void theUpdateStaysWithinItsPlaces_data() { addAnswers(); }

    void theUpdateStaysWithinItsPlaces()
    {
        QFETCH(QJsonObject, answer);
        cloud_->begin(QJsonObject{{"table", answer}, {"version", answer}});
        memory::forgetPeak();
        const qint64 before = memory::peak();
        int offers = 0;
        {
            ORBUpdate update({cloud_->host(), path("data"),
                              [](const QString &) { QFAIL("nothing may be started"); },
                              cloud::PeerCheck::Off, longestInstaller});
            connect(&update, &ORBUpdate::updateSignal, this, [&offers] { ++offers; });
            QTRY_VERIFY_WITH_TIMEOUT(update.findChildren<QNetworkReply *>().isEmpty(), 120000);
        }
        QCOMPARE(offers, 0);
        QVERIFY2(memory::peak() - before < memoryLimit,
                 qPrintable(QString::number((memory::peak() - before) >> 20) + " MiB"));
        QStringList files = tree();
        files.removeAll("compare.json");
        QCOMPARE(files, QStringList());
    }

    void nobodyFloodsABusyProgram_data()
    {
        QTest::addColumn<QJsonObject>("answer");
        const QJsonObject packed{{"Content-Encoding", "deflate"}};
        QTest::newRow("endless") << body(QByteArray(65536, 'x'), {{"endless", true}});
        QTest::newRow("packed") << body(bomb(), {{"headers", packed}});
    }

    void nobodyFloodsABusyProgram()
    {
        QFETCH(QJsonObject, answer);
        cloud_->begin(QJsonObject{
            {"table", answer}, {"version", answer}, {"events", answer}, {"upload", answer}});
        writeFile("feedback.json", "{}");
        memory::forgetPeak();
        const qint64 before = memory::peak();
        ORBUpdate update({cloud_->host(), path("data"),
                          [](const QString &) { QFAIL("nothing may be started"); },
                          cloud::PeerCheck::Off, longestInstaller});
        beBusy(update);
        QTRY_VERIFY_WITH_TIMEOUT(update.findChildren<QNetworkReply *>().isEmpty(), 120000);

        ManualClock clock;
        HttpManager manager(
            {clock, [] { return QJsonObject(); }, cloud_->base(), cloud::PeerCheck::Off});
        manager.addEvent("id", {});
        announce(QString("error evnetid: "
                         "[{\"defaultData\":{},\"eventId\":\"id\",\"extraData\":{},"
                         "\"timestamp\":%1}] json parse fail")
                     .arg(clock.epochMilliseconds()));
        manager.sendEvents(true);
        manager.uploadFile("feedback.json", "name");
        beBusy(manager);
        QTRY_VERIFY_WITH_TIMEOUT(manager.findChildren<QNetworkReply *>().isEmpty(), 120000);
        QVERIFY2(memory::peak() - before < memoryLimit,
                 qPrintable(QString::number((memory::peak() - before) >> 20) + " MiB"));
    }

    void theInstallerStaysWithinItsFolder_data()
    {
        QTest::addColumn<QJsonObject>("answer");
        QTest::addColumn<Outcome>("outcome");
        addTransfers();
    }

    void theInstallerStaysWithinItsFolder()
    {
        QFETCH(QJsonObject, answer);
        cloud_->begin(QJsonObject{{"like", "newer"}, {"installer", answer}});
        memory::forgetPeak();
        const qint64 before = memory::peak();
        int offers = 0;
        int ends = 0;
        {
            ORBUpdate update({cloud_->host(), path("data"),
                              [](const QString &) { QFAIL("nothing may be started"); },
                              cloud::PeerCheck::Off, longestInstaller});
            connect(&update, &ORBUpdate::updateSignal, this, [&offers] { ++offers; });
            connect(&update, &ORBUpdate::downExeFinish, this, [&ends] { ++ends; });
            QTRY_VERIFY_WITH_TIMEOUT(update.findChildren<QNetworkReply *>().isEmpty(), 120000);
        }
        QCOMPARE(ends, 1);
        QVERIFY2(memory::peak() - before < memoryLimit,
                 qPrintable(QString::number((memory::peak() - before) >> 20) + " MiB"));
        // An installer may hold anything; but it is offered when it is there,
        // and only then.
        QStringList files = tree();
        files.removeAll("compare.json");
        QCOMPARE(files,
                 offers == 1 ? QStringList("data/download/KOLM_Setup_9.1.17.exe") : QStringList());
    }

    void reportsEndInTheLog_data() { addAnswers(); }

    void reportsEndInTheLog()
    {
        QFETCH(QJsonObject, answer);
        QFETCH(Outcome, outcome);
        cloud_->begin(QJsonObject{{"events", answer}, {"upload", answer}});
        writeFile("feedback.json", "{}");
        const QByteArray text = QByteArray::fromBase64(answer["base64"].toString().toLatin1());
        ManualClock clock;
        HttpManager manager(
            {clock, [] { return QJsonObject(); }, cloud_->base(), cloud::PeerCheck::Off});
        const QString batch =
            QString("[{\"defaultData\":{},\"eventId\":\"id\",\"extraData\":{},\"timestamp\":%1}]")
                .arg(clock.epochMilliseconds());
        if (outcome == NotJson) {
            announce("error evnetid: " + batch + " json parse fail");
        } else if (outcome == Refused) {
            const QByteArray object = QJsonDocument::fromJson(text).toJson(QJsonDocument::Compact);
            announce("report error: " + QString::fromUtf8(object) + ":" + batch);
        }
        memory::forgetPeak();
        const qint64 before = memory::peak();
        manager.addEvent("id", {});
        manager.sendEvents(true);
        manager.uploadFile("feedback.json", "name");
        QTRY_VERIFY_WITH_TIMEOUT(manager.findChildren<QNetworkReply *>().isEmpty(), 120000);
        QVERIFY2(memory::peak() - before < memoryLimit,
                 qPrintable(QString::number((memory::peak() - before) >> 20) + " MiB"));
        QCOMPARE(logged().size(), outcome == Silent ? 0 : 2); // one for each
        QCOMPARE(tree(), QStringList("feedback.json"));
    }

private:
    // Everything below the test's folder.
    QStringList tree() const
    {
        QStringList paths;
        QDirIterator it(dir(), QDir::Files | QDir::Hidden | QDir::System,
                        QDirIterator::Subdirectories);
        while (it.hasNext())
            paths << QDir(dir()).relativeFilePath(it.next());
        paths.sort();
        return paths;
    }

    // Has the program look away for a while as soon as something of an answer is
    // there; not for longer than it takes to fill the memory.
    void beBusy(const QObject &owner)
    {
        const qint64 before = memory::peak();
        const auto replies = owner.findChildren<QNetworkReply *>();
        QCOMPARE(replies.size(), 2);
        for (QNetworkReply *reply : replies) {
            const auto wasBusy = std::make_shared<bool>(false);
            connect(reply, &QNetworkReply::readyRead, this, [before, wasBusy] {
                if (*wasBusy)
                    return;
                *wasBusy = true;
                int rounds = 5000;
                while (--rounds > 0 && memory::peak() - before < memoryLimit)
                    continue;
            });
        }
    }
};

KOLM_TEST_MAIN(TestHostileReplies)
#include "tst_hostile_replies.moc"
