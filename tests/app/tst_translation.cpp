#include "app/translation.h"
#include "tests/support/test_case.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTranslator>

namespace {

QString shown()
{
    return QCoreApplication::translate("Test", "串流助手");
}

QList<QTranslator *> translators()
{
    return QCoreApplication::instance()->findChildren<QTranslator *>();
}

} // namespace

class TranslationTest : public TestCase
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        qDeleteAll(translators());
        TestCase::cleanup();
    }

    void everyLanguageHasItsFile_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("file");
        const auto row = [](QLocale::Language language, const char *file) {
            QTest::newRow(qPrintable(QLocale::languageToString(language)))
                << int(language) << QString::fromLatin1(file);
        };
        row(QLocale::Japanese, "japanese.qm");
        row(QLocale::Chinese, "");
        row(QLocale::English, "chinese.qm");
        row(QLocale::German, "chinese.qm");
        row(QLocale::Korean, "chinese.qm");
        row(QLocale::Cantonese, "chinese.qm");
        row(QLocale::C, "chinese.qm");
        row(QLocale::AnyLanguage, "chinese.qm");
    }

    void everyLanguageHasItsFile()
    {
        QFETCH(int, language);
        QFETCH(QString, file);
        QCOMPARE(translationFile(static_cast<QLocale::Language>(language)), file);
    }

    void theFileInTheWorkingFolderIsInstalled_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("text");
        QTest::newRow("Japanese") << int(QLocale::Japanese)
                                  << QString::fromUtf8("ストリーミングアシスタント");
        QTest::newRow("English") << int(QLocale::English) << QStringLiteral("Streaming assistant");
        QTest::newRow("French") << int(QLocale::French) << QStringLiteral("Streaming assistant");
    }

    void theFileInTheWorkingFolderIsInstalled()
    {
        QFETCH(int, language);
        QFETCH(QString, text);
        putFile(QStringLiteral("japanese.qm"));
        putFile(QStringLiteral("chinese.qm"));
        QCOMPARE(shown(), QString::fromUtf8("串流助手"));

        installTranslation(static_cast<QLocale::Language>(language), QCoreApplication::instance());

        QCOMPARE(shown(), text);
        QCOMPARE(translators().size(), 1);
        QCOMPARE(logged(), QStringList());
    }

    void theFileBesideTheProgramIsNotLookedFor_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("warning");
        QTest::newRow("Japanese") << int(QLocale::Japanese) << QStringLiteral("japanese load fail");
        QTest::newRow("English") << int(QLocale::English) << QStringLiteral("english load fail");
        QTest::newRow("French") << int(QLocale::French) << QStringLiteral("english load fail");
    }

    void theFileBesideTheProgramIsNotLookedFor()
    {
        QFETCH(int, language);
        QFETCH(QString, warning);
        // The program's own folder is not the working folder.
        putFile(QStringLiteral("japanese.qm"), QStringLiteral("program"));
        putFile(QStringLiteral("chinese.qm"), QStringLiteral("program"));
        announce(warning);

        installTranslation(static_cast<QLocale::Language>(language), QCoreApplication::instance());

        QCOMPARE(logged(), QStringList(warning));
        QCOMPARE(shown(), QString::fromUtf8("串流助手"));
        QVERIFY(translators().isEmpty());
    }

    void anUnreadableFileIsAMissingFile()
    {
        writeFile("japanese.qm", "no translation at all");
        announce(QStringLiteral("japanese load fail"));
        installTranslation(QLocale::Japanese, QCoreApplication::instance());
        QVERIFY(translators().isEmpty());
    }

    void chineseNeedsNoFile()
    {
        installTranslation(QLocale::Chinese, QCoreApplication::instance());
        QCOMPARE(logged(), QStringList());

        putFile(QStringLiteral("japanese.qm"));
        putFile(QStringLiteral("chinese.qm"));
        installTranslation(QLocale::Chinese, QCoreApplication::instance());
        QCOMPARE(logged(), QStringList());
        QCOMPARE(shown(), QString::fromUtf8("串流助手"));
        QVERIFY(translators().isEmpty());
    }

private:
    void putFile(const QString &name, const QString &folder = QStringLiteral("."))
    {
        const QString source = QStringLiteral(KOLM_TEST_TRANSLATIONS "/") + name;
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(QFile::copy(source, folder + '/' + name));
    }
};

KOLM_TEST_MAIN(TranslationTest)
#include "tst_translation.moc"
