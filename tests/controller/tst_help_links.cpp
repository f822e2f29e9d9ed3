#include "controller/help_links.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>

Q_DECLARE_METATYPE(QLocale::Language)

class TestHelpLinks : public TestCase
{
    Q_OBJECT

    const help_links::GuideAddresses none;
    const help_links::GuideAddresses both{"https://guide.example/zh", "https://guide.example/en"};

    void install(const QStringList &pages) const
    {
        QDir(dir()).mkpath("guide");
        for (const QString &page : pages)
            writeFile("guide/" + page, "<html/>");
    }
    QUrl page(const QString &name) const { return QUrl::fromLocalFile(path("guide/" + name)); }

    static void languages()
    {
        QTest::addColumn<QLocale::Language>("language");
        QTest::addColumn<QString>("page");
        QTest::newRow("Chinese") << QLocale::Chinese << "zh.html";
        QTest::newRow("English") << QLocale::English << "en.html";
        QTest::newRow("Japanese") << QLocale::Japanese << "ja.html";
        QTest::newRow("German") << QLocale::German << "en.html";
        QTest::newRow("none") << QLocale::C << "en.html";
    }

private slots:
    void theGuideIsInTheLanguageThatIsNearest_data()
    {
        QTest::addColumn<QLocale::Language>("language");
        QTest::addColumn<bool>("chinese");
        QTest::newRow("Chinese") << QLocale::Chinese << true;
        QTest::newRow("English") << QLocale::English << false;
        QTest::newRow("Japanese") << QLocale::Japanese << false;
        QTest::newRow("none") << QLocale::C << false;
    }
    void theGuideIsInTheLanguageThatIsNearest()
    {
        QFETCH(QLocale::Language, language);
        QFETCH(bool, chinese);
        install({"zh.html", "en.html", "ja.html"});
        QCOMPARE(help_links::userGuide(language, dir(), both),
                 QUrl(chinese ? both.chinese : both.english));
    }

    void withoutAnAddressItIsThePageInTheProgramsLanguage_data() { languages(); }
    void withoutAnAddressItIsThePageInTheProgramsLanguage()
    {
        QFETCH(QLocale::Language, language);
        QFETCH(QString, page);
        install({"zh.html", "en.html", "ja.html"});
        const QUrl guide = help_links::userGuide(language, dir(), none);
        QCOMPARE(guide, this->page(page));
        QVERIFY(guide.isLocalFile());
        QVERIFY2(QFile::exists(guide.toLocalFile()), qPrintable(guide.toLocalFile()));
    }

    void oneAddressLeavesTheOtherLanguageItsPage()
    {
        install({"zh.html", "en.html", "ja.html"});
        const help_links::GuideAddresses english{QString(), both.english};
        QCOMPARE(help_links::userGuide(QLocale::Chinese, dir(), english), page("zh.html"));
        QCOMPARE(help_links::userGuide(QLocale::Japanese, dir(), english), QUrl(both.english));
        const help_links::GuideAddresses chinese{both.chinese, QString()};
        QCOMPARE(help_links::userGuide(QLocale::Chinese, dir(), chinese), QUrl(both.chinese));
        QCOMPARE(help_links::userGuide(QLocale::Japanese, dir(), chinese), page("ja.html"));
    }

    void aPageThatIsMissingIsStoodInFor()
    {
        install({"zh.html"});
        QCOMPARE(help_links::userGuide(QLocale::Japanese, dir(), none), page("zh.html"));
        install({"en.html"});
        QCOMPARE(help_links::userGuide(QLocale::Japanese, dir(), none), page("en.html"));
        install({"ja.html"});
        QCOMPARE(help_links::userGuide(QLocale::Japanese, dir(), none), page("ja.html"));
        QCOMPARE(help_links::userGuide(QLocale::Chinese, dir(), none), page("zh.html"));
    }

    void withoutAnyPageThereIsNothingToOpen()
    {
        announce("there is no user guide beside the program");
        QVERIFY(help_links::userGuide(QLocale::English, dir(), none).isEmpty());
        // An address needs none.
        QCOMPARE(help_links::userGuide(QLocale::English, dir(), both), QUrl(both.english));
    }
};

KOLM_TEST_MAIN(TestHelpLinks)
#include "tst_help_links.moc"
