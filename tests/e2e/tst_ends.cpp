#include "tests/e2e/program.h"
#include "tests/support/test_case.h"

#include <QFile>

// The end of the real program while others do not answer: what the user has set is
// stored, and nobody is waited for.
class TestEnds : public TestCase
{
    Q_OBJECT

private slots:
    void aNameServerThatNeverAnswers()
    {
        Program program(dir(), "steam-already-running");
        program.environment.insert("LD_PRELOAD", SLOW_NAMES);
        program.environment.insert("SLOW_NAMES_ASKED", path("asked"));
        program.environment.insert("SIMPC_CLOUD_HOST", "cloud.example");
        program.environment.insert("SIMPC_UNTIL", "connected");
        QVERIFY(program.start());
        // The name server takes two minutes.
        QCOMPARE(program.wait(60000), 0);
        QVERIFY(QFile::exists(path("asked")));
        const QJsonObject stored = program.json(program.dataDir() + "/set.json");
        QVERIFY(!stored.value("lastSn").toString().isEmpty());
    }
};

KOLM_TEST_MAIN(TestEnds)
#include "tst_ends.moc"
