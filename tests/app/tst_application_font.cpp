#include "app/application_font.h"
#include "tests/support/test_case.h"

#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>

class ApplicationFontTest : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        original_ = QGuiApplication::font();
    }

    void cleanup()
    {
        QGuiApplication::setFont(original_);
        TestCase::cleanup();
    }

    void theFirstFamilyIsUsedAtTwentyPixels()
    {
        const int id = QFontDatabase::addApplicationFont(QStringLiteral(KOLM_TEST_FONT));
        const QStringList families = QFontDatabase::applicationFontFamilies(id);
        // What follows in the name depends on the system.
        QVERIFY(families.value(0).startsWith(QLatin1String("Source Han Sans CN")));
        QVERIFY(QGuiApplication::font().family() != families.first());

        setApplicationFont(QStringLiteral(KOLM_TEST_FONT));

        QCOMPARE(QGuiApplication::font().family(), families.first());
        QCOMPARE(QGuiApplication::font().pixelSize(), 20);
    }

    void everythingElseAboutTheFontStays()
    {
        QFont font = original_;
        font.setItalic(true);
        font.setUnderline(true);
        QGuiApplication::setFont(font);
        setApplicationFont(QStringLiteral(KOLM_TEST_FONT));
        QVERIFY(QGuiApplication::font().italic());
        QVERIFY(QGuiApplication::font().underline());
    }

    void aFontThatCannotBeLoadedChangesNothing_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("missing") << QStringLiteral("missing.ttf");
        QTest::newRow("missing in the resources") << QStringLiteral(":/res/missing.ttf");
        QTest::newRow("no font") << QStringLiteral("text.ttf");
    }

    void aFontThatCannotBeLoadedChangesNothing()
    {
        QFETCH(QString, file);
        writeFile("text.ttf", "not a font");
        setApplicationFont(file);
        QCOMPARE(QGuiApplication::font(), original_);
        QCOMPARE(logged(), QStringList());
    }

private:
    QFont original_;
};

QTEST_MAIN(ApplicationFontTest)
#include "tst_application_font.moc"
