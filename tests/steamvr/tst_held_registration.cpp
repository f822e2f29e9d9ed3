#include "config/openvr_paths.h"
#include "tests/steamvr/steam_fixture.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QThread>

#include <memory>

namespace {

const QString cleared = QStringLiteral("Successfully cleared external_drivers array (empty array)");

// OpenVR's list while somebody holds it: nobody can read a folder either.
class Held
{
public:
    explicit Held(const QString &file) : file_(file)
    {
        if (!QFile::rename(file_, file_ + ".held") || !QDir().mkdir(file_))
            qFatal("the list cannot be held");
    }
    ~Held()
    {
        QDir().rmdir(file_);
        QFile::rename(file_ + ".held", file_);
    }
    Q_DISABLE_COPY(Held)

private:
    QString file_;
};

} // namespace

// The driver's registration is taken back also when somebody holds OpenVR's list
// at that moment.
class HeldRegistrationTest : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        pc_ = std::make_unique<SteamFixture>(dir());
        pc_->pc.launches.on("explorer", [](const SimLaunch &) { return SimLaunchResult{}; });
        pc_->steamRuns();
    }
    void cleanup()
    {
        pc_.reset();
        TestCase::cleanup();
    }

    void itGoesAsSoonAsTheListIsFree()
    {
        pc_->steam().startSteamVR();
        auto held = hold();
        pc_->pc.cell().write(1);
        announceOnce();
        pc_->clock.advance(2000);
        QVERIFY(!pc_->clock.idle());
        held.reset();
        QVERIFY(isRegistered());
        pc_->clock.advance(500);
        QVERIFY(!isRegistered());
        QCOMPARE(loggedCount(cleared), 1);
        QCOMPARE(loggedCount("[steam] vrserver.exe detected, clearing VR config"), 1);
        QCOMPARE(pc_->clock.slept(), 0); // nobody was kept waiting
        QVERIFY(pc_->clock.idle());
    }

    void aLaterRegistrationStays()
    {
        pc_->steam().startSteamVR();
        auto held = hold();
        pc_->pc.cell().write(1);
        announceOnce();
        pc_->clock.advance(100);
        held.reset();
        pc_->steam().startSteamVR(); // zeroes the cell
        pc_->clock.advance(5000);
        QVERIFY(isRegistered());
        pc_->pc.cell().write(1);
        pc_->clock.advance(50);
        QVERIFY(!isRegistered());
        QVERIFY(pc_->clock.idle());
    }

    void aStopThatWaitsForSteamVRTriesAgainMeanwhile()
    {
        pc_->steam().startSteamVR();
        pc_->pc.processes.start("vrserver.exe");
        auto held = hold();
        announceOnce();
        pc_->pc.timeline.after(2000, [&] {
            held.reset();
            pc_->pc.processes.endAll("vrserver.exe");
        });
        pc_->steam().stopSteamVR();
        QVERIFY(!isRegistered());
        QCOMPARE(pc_->clock.slept(), 2000 + 2500); // not a moment longer
    }

    void aStopThatNeedNotWaitLeavesItToAThreadOfItsOwn()
    {
        pc_->steam().startSteamVR();
        auto held = hold();
        announceOnce();
        pc_->steam().stopSteamVR();
        QCOMPARE(pc_->clock.slept(), 0);
        held.reset();
        pc_->clock.advance(500);
        QVERIFY(!isRegistered());
    }

    void theEndOfTheProgramTriesOnceMore()
    {
        pc_->steam().startSteamVR();
        auto held = hold();
        announceOnce();
        pc_->pc.cell().write(1);
        pc_->clock.advance(50);
        // It is free when the watcher is there no more.
        connect(pc_->steam().findChild<QThread *>(), &QObject::destroyed, this,
                [&held] { held.reset(); });
        pc_->dropSteam();
        QVERIFY(!isRegistered());
        QCOMPARE(pc_->clock.slept(), 0);
    }

    void theEndOfTheProgramDoesNotWaitForEver()
    {
        pc_->steam().startSteamVR();
        const auto held = hold();
        announceOnce();
        pc_->pc.cell().write(1);
        pc_->clock.advance(50);
        pc_->dropSteam();
        QCOMPARE(pc_->clock.slept(), 3000);
    }

    void withNothingOwedTheEndDoesNotWait()
    {
        pc_->steam().startSteamVR();
        const auto held = hold();
        pc_->dropSteam();
        QCOMPARE(pc_->clock.slept(), 0);
    }

private:
    std::unique_ptr<Held> hold() const
    {
        return std::make_unique<Held>(openvr_paths::path(pc_->home));
    }
    void announceOnce()
    {
        announce("Failed to open file for reading:" + openvr_paths::path(pc_->home));
    }
    bool isRegistered() const { return pc_->vrPath().value("external_drivers").isArray(); }

    std::unique_ptr<SteamFixture> pc_;
};

KOLM_TEST_MAIN(HeldRegistrationTest)
#include "tst_held_registration.moc"
