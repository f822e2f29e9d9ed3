#include "cloud/orb_update.h"

#include "peers/cloud_sim/pattern.h"
#include "tests/cloud/cloud_peer.h"
#include "tests/cloud/memory.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QNetworkReply>

namespace {

constexpr qint64 size = 200 << 20;   // bytes
constexpr qint64 backlog = 16 << 20; // bytes

} // namespace

class TestLargeInstaller : public TestCase
{
    Q_OBJECT

    // Whether the file at `path` is the whole pattern, and nothing else.
    static bool isWhole(const QString &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly) || file.size() != size)
            return false;
        constexpr qint64 piece = 1 << 20;
        for (qint64 at = 0; at < size; at += piece) {
            if (file.read(piece) != pattern(at, piece))
                return false;
        }
        return true;
    }

    // What comes in while the program looks away, for as long as that takes.
    static qint64 growthWhileBusy()
    {
        const qint64 before = memory::inUse();
        for (int rounds = 0; rounds < 500000 && memory::inUse() - before < backlog; ++rounds)
            continue;
        return memory::inUse() - before;
    }

private slots:
    void twoHundredMegabytesArriveWholeAndLeaveTheMemory()
    {
        CloudPeer cloud;
        QVERIFY(cloud.isUp());
        cloud.begin("large-installer");
        const qint64 before = memory::inUse();
        QList<float> progress;
        QStringList seen; // the order of the last signals
        ORBUpdate update(
            {cloud.host(), path("data"), [](const QString &) {}, cloud::PeerCheck::Off});
        qint64 most = 0;
        qint64 piledUp = 0;
        connect(&update, &ORBUpdate::processStatus, this, [&](float value) {
            progress << value;
            if (progress.size() == 1)
                piledUp = growthWhileBusy();
            most = std::max(most, memory::inUse());
        });
        connect(&update, &ORBUpdate::updateSignal, this, [&] { seen << "update"; });
        connect(&update, &ORBUpdate::downExeFinish, this, [&] { seen << "finish"; });
        QTRY_VERIFY_WITH_TIMEOUT(update.findChildren<QNetworkReply *>().isEmpty(), 110000);

        QCOMPARE(seen, QStringList({"update", "finish"}));
        QVERIFY(progress.size() > 2);
        QVERIFY(std::is_sorted(progress.begin(), progress.end()));
        QVERIFY(progress.first() >= 0.0f);
        QCOMPARE(progress.last(), 1.0f);
        QVERIFY(isWhole(path("data/download/KOLM_Setup_9.1.17.exe")));
        QCOMPARE(QDir(path("data/download")).entryList(QDir::Files | QDir::Hidden).size(), 1);
        if (before == 0)
            return; // nobody counts here
        QVERIFY2(piledUp < backlog, qPrintable(QString::number(piledUp)));
        // It is held once on the way, and not at all afterwards.
        QVERIFY(most - before > size / 2);
        QVERIFY2(most - before < size + size / 2, qPrintable(QString::number(most - before)));
        QVERIFY2(memory::inUse() - before < size / 20,
                 qPrintable(QString::number(memory::inUse() - before)));
    }

    void twoHundredMegabytesThatBreakOffLeaveNothing()
    {
        CloudPeer cloud;
        QVERIFY(cloud.isUp());
        cloud.begin(QJsonObject{
            {"like", "newer"}, {"installer", QJsonObject{{"size", size}, {"cutAfter", size - 1}}}});
        QStringList seen;
        ORBUpdate update(
            {cloud.host(), path("data"), [](const QString &) {}, cloud::PeerCheck::Off});
        connect(&update, &ORBUpdate::updateSignal, this, [&] { seen << "update"; });
        connect(&update, &ORBUpdate::downExeFinish, this, [&] { seen << "finish"; });
        QTRY_VERIFY_WITH_TIMEOUT(update.findChildren<QNetworkReply *>().isEmpty(), 110000);
        QCOMPARE(seen, QStringList("finish"));
        QCOMPARE(QDir(path("data/download")).entryList(QDir::Files | QDir::Hidden), QStringList());
    }
};

KOLM_TEST_MAIN(TestLargeInstaller)
#include "tst_large_installer.moc"
