#include "app/start_up.h"
#include "app/surroundings.h"
#include "tests/support/test_case.h"

namespace {

class Refusing final : public Surroundings
{
public:
    [[nodiscard]] std::optional<int> begin() override
    {
        ++begun;
        applicationWasThere = QCoreApplication::instance() != nullptr;
        return 7;
    }
    void attach(QQmlApplicationEngine &, const ConnectionStages *) override { ++attached; }
    int exitCode(int) const override { return 8; }

    int begun = 0;
    int attached = 0;
    bool applicationWasThere = true;
};

} // namespace

class TestStartUp : public TestCase
{
    Q_OBJECT

private slots:
    void surroundingsThatRefuseEndTheProgramBeforeThereIsAnApplication()
    {
        char name[] = "program";
        char *arguments[] = {name, nullptr};
        Refusing surroundings;
        QCOMPARE(runAssistant(1, arguments, surroundings), 7);
        QCOMPARE(surroundings.begun, 1);
        QVERIFY(!surroundings.applicationWasThere);
        QCOMPARE(surroundings.attached, 0);
    }

    void nothingAroundTheProgramLeavesItAlone()
    {
        Surroundings none;
        QVERIFY(!none.begin());
        QCOMPARE(none.exitCode(0), 0);
        QCOMPARE(none.exitCode(-1), -1);
    }
};

// The program makes the application object itself.
int main(int argc, char *argv[])
{
    TestStartUp test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_start_up.moc"
