#include "base/manual_clock.h"
#include "tests/cloud/update_fixture.h"

#include <QDir>
#include <QFile>

namespace {

const QString again = QStringLiteral("The installer is held by another program, trying again");
const QString givenUp = QStringLiteral("The installer is still held by another program, given up");

} // namespace

// An installer that a virus scanner holds as soon as it is there.
class TestUpdateHeld : public UpdateFixture
{
    Q_OBJECT

private slots:
    void itIsPutIntoItsPlaceWhenItIsFree()
    {
        offer(3);
        QCOMPARE(saves_, 1);
        QVERIFY(offers_.isEmpty());
        QCOMPARE(finished_, 0);
        clock_.advance(2999);
        QCOMPARE(saves_, 3);
        QVERIFY(offers_.isEmpty());
        clock_.advance(1);
        QCOMPARE(offers_, QStringList{"New|false"});
        QCOMPARE(finished_, 1);
        QVERIFY(QFile::exists(installer()));
        QCOMPARE(loggedCount(again), 1);
        clock_.advance(20000);
        QCOMPARE(saves_, 4);
    }

    void afterTenSecondsItIsGivenUp()
    {
        offer(-1);
        clock_.advance(20000);
        QCOMPARE(saves_, 11);
        QVERIFY(offers_.isEmpty());
        QCOMPARE(finished_, 1);
        QCOMPARE(loggedCount(again), 1);
        QCOMPARE(loggedCount(givenUp), 1);
    }

    void whoGivesUpTriesNoMore()
    {
        offer(-1);
        update_->abortRequests();
        clock_.advance(20000);
        QCOMPARE(saves_, 1);
        QCOMPARE(finished_, 0);
    }

    void whatFailsForAnotherReasonIsNotTriedAgain()
    {
        QVERIFY(QDir().mkpath(installer()));
        offer(0);
        QCOMPARE(saves_, 1);
        QCOMPARE(finished_, 1);
        QVERIFY(clock_.idle());
    }

private:
    // A newer version whose installer is held at so many tries; -1: at all.
    void offer(int held)
    {
        saves_ = 0;
        cloud_->begin(newer());
        update_ = std::make_unique<ORBUpdate>(ORBUpdate::Dependencies{
            cloud_->host(), path("data"), [](const QString &) {}, cloud::PeerCheck::Off, 512 << 20,
            clock_,
            [this, held](const QByteArray &content, const QString &file) {
                ++saves_;
                return held < 0 || saves_ <= held ? Saved::Held : saveDownload(content, file);
            }});
        connect(update_.get(), &ORBUpdate::updateSignal, this,
                [this](const QString &note, bool isForce) {
                    offers_ << note + (isForce ? "|true" : "|false");
                });
        connect(update_.get(), &ORBUpdate::downExeFinish, this, [this] { ++finished_; });
        settle();
    }

    ManualClock clock_;
    int saves_ = 0;
};

KOLM_TEST_MAIN(TestUpdateHeld)
#include "tst_update_held.moc"
