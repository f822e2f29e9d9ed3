#include "pc/own_variables.h"
#include "tests/support/test_case.h"

// What this process sees of its own variables, and what it tells Qt to hand on.
class TestOwnVariables : public TestCase
{
    Q_OBJECT

private slots:
    void thisProcessFindsThemAll()
    {
        own_variables::set("KOLM_TEST_FIRST", "512");
        own_variables::set("KOLM_TEST_SECOND", "1.25");
        qputenv("KOLM_TEST_OTHER", "after them"); // somebody else changes something
        own_variables::set("KOLM_TEST_FIRST", "1024");
        QCOMPARE(qEnvironmentVariableIntValue("KOLM_TEST_FIRST"), 1024);
        QCOMPARE(qgetenv("KOLM_TEST_SECOND"), QByteArray("1.25"));
        QCOMPARE(qEnvironmentVariable("KOLM_TEST_SECOND"), QString("1.25"));
    }

    void childrenGetEverythingElse()
    {
        qputenv("KOLM_TEST_SHARED", "yes");
        own_variables::set("KOLM_TEST_OWN", "512");
        const QProcessEnvironment handedOn = own_variables::forChildren();
        QCOMPARE(handedOn.value("KOLM_TEST_SHARED"), QString("yes"));
        QVERIFY(!handedOn.contains("KOLM_TEST_OWN"));
        QVERIFY(handedOn.contains("PATH"));
    }

    void whatIsHiddenIsForChildrenAlone()
    {
        qputenv("KOLM_TEST_FOREIGN", "de_DE");
        own_variables::hide("KOLM_TEST_FOREIGN");
        QVERIFY(!qEnvironmentVariableIsSet("KOLM_TEST_FOREIGN"));
        QCOMPARE(own_variables::forChildren().value("KOLM_TEST_FOREIGN"), QString("de_DE"));
    }

    void whatNobodyHasSetIsHiddenFromNobody()
    {
        own_variables::hide("KOLM_TEST_NOBODYS");
        QVERIFY(!own_variables::forChildren().contains("KOLM_TEST_NOBODYS"));
    }
};

KOLM_TEST_MAIN(TestOwnVariables)
#include "tst_own_variables.moc"
