#include "base/manual_clock.h"
#include "cloud/installer_start.h"
#include "tests/support/test_case.h"

// The installer's start, which a virus scanner may put off.
class InstallerStartTest : public TestCase
{
    Q_OBJECT

private slots:
    void itIsTriedAgainUntilItWorks_data()
    {
        QTest::addColumn<int>("failures");
        QTest::addColumn<int>("starts");
        QTest::addColumn<int>("slept");
        QTest::addColumn<QStringList>("said");
        const QString again = "The installer cannot be started yet, trying again";
        QTest::newRow("at once") << 0 << 1 << 0 << QStringList();
        QTest::newRow("at the third try") << 2 << 3 << 500 << QStringList{again};
        QTest::newRow("at the last moment") << 12 << 13 << 3000 << QStringList{again};
        QTest::newRow("never") << -1 << 13 << 3000
                               << QStringList{
                                      again,
                                      "The installer could not be started: C:/a b/Setup.exe"};
    }

    void itIsTriedAgainUntilItWorks()
    {
        QFETCH(int, failures);
        ManualClock clock;
        int starts = 0;
        startInstaller("C:/a b/Setup.exe", clock, [&](const QString &path) {
            ++starts;
            return path == "C:/a b/Setup.exe" && failures >= 0 && starts > failures;
        });
        QTEST(starts, "starts");
        QTEST(int(clock.slept()), "slept");
        QTEST(logged(), "said");
    }
};

KOLM_TEST_MAIN(InstallerStartTest)
#include "tst_installer_start.moc"
