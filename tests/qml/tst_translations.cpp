#include "tests/support/test_case.h"
#include "tests/support/translations.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

#include <vector>

namespace {

QStringList matches(const QString &text, const QString &pattern)
{
    QStringList found;
    QRegularExpressionMatchIterator all = QRegularExpression(pattern).globalMatch(text);
    while (all.hasNext())
        found.append(all.next().captured());
    found.sort();
    return found;
}

QString fileOf(const QString &language)
{
    return QStringLiteral(KOLM_SOURCE_DIR "/translations/") + language + ".ts";
}

} // namespace

class TestTranslations : public TestCase
{
    Q_OBJECT

    static void languages()
    {
        QTest::addColumn<QString>("language");
        QTest::newRow("Japanese") << "japanese";
        QTest::newRow("English") << "chinese";
    }

private slots:
    void everyEntryIsTranslated_data() { languages(); }
    void everyEntryIsTranslated()
    {
        QFETCH(QString, language);
        const std::vector<TranslationEntry> entries = readTranslations(fileOf(language));
        QVERIFY(!entries.empty());
        for (const TranslationEntry &entry : entries) {
            if (entry.type == "vanished" || entry.type == "obsolete")
                continue;
            QVERIFY2(entry.type.isEmpty(), qPrintable(entry.type + ": " + entry.source));
            QVERIFY2(!entry.translation.trimmed().isEmpty(), qPrintable("empty: " + entry.source));
        }
    }

    void placeholdersAgree_data() { languages(); }
    void placeholdersAgree()
    {
        QFETCH(QString, language);
        for (const TranslationEntry &entry : readTranslations(fileOf(language))) {
            for (const char *pattern : {"%L?\\d", "%n", "<[^>]+>", "\\n"})
                QCOMPARE(matches(entry.translation, pattern), matches(entry.source, pattern));
        }
    }

    void englishHoldsNoChinese()
    {
        for (const TranslationEntry &entry : readTranslations(fileOf("chinese"))) {
            // Chinese letters, and the full-width marks that Chinese texts end in.
            QVERIFY2(
                matches(entry.translation, "[\\x{3000}-\\x{9FFF}\\x{FF00}-\\x{FFEF}]").isEmpty(),
                qPrintable(entry.translation));
        }
    }

    void oneTextReadsTheSameEverywhere_data() { languages(); }
    void oneTextReadsTheSameEverywhere()
    {
        QFETCH(QString, language);
        QHash<QString, TranslationEntry> known;
        for (const TranslationEntry &entry : readTranslations(fileOf(language))) {
            if (entry.type == "vanished" || entry.type == "obsolete")
                continue;
            const auto before = known.constFind(entry.source);
            if (before == known.constEnd())
                known.insert(entry.source, entry);
            else
                QVERIFY2(
                    before->translation == entry.translation,
                    qPrintable(entry.source + " in " + before->context + " and " + entry.context));
        }
    }

    void everyContextIsThere_data() { languages(); }
    void everyContextIsThere()
    {
        QFETCH(QString, language);
        QStringList contexts;
        for (const TranslationEntry &entry : readTranslations(fileOf(language))) {
            if (!contexts.contains(entry.context))
                contexts.append(entry.context);
        }
        for (const char *context : {"ORBManager",          "QObject",      "SystemInfo",
                                    "mainWindow",          "PageItem",     "SteamPageItem",
                                    "SelectModePage",      "SingleAppTip", "SettingPage",
                                    "MoreSettingPage",     "FeedbackPage", "SystemInfoPage",
                                    "ChangesPage",         "ConfirmPage",  "PowerDownPage",
                                    "NetworkSetting",      "WaitNotice",   "UsePortProcessTips",
                                    "UpdateGpuDriverTips", "UpdatePage",   "WaitPage"})
            QVERIFY2(contexts.contains(context), context);
    }

    void everyTextOfTheProgramIsThere_data() { languages(); }
    void everyTextOfTheProgramIsThere()
    {
        QFETCH(QString, language);
        const QString lupdate = QStringLiteral(KOLM_LUPDATE);
        if (lupdate.isEmpty())
            QSKIP("there is no lupdate on this system");

        // What lupdate would add to a copy of the file.
        const QString copy = path("copy.ts");
        QVERIFY(QFile::copy(fileOf(language), copy));
        QVERIFY(QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner));
        QProcess process;
        process.setWorkingDirectory(QStringLiteral(KOLM_SOURCE_DIR));
        QStringList arguments{"-silent", "-locations", "none", "-I", "."};
        arguments += QStringList{"qml",   "controller", "checks", "steamvr", "sysinfo",
                                 "cloud", "link",       "ui",     "app"};
        arguments += QStringList{"-extensions", "cpp,h,qml", "-ts", copy};
        process.start(lupdate, arguments);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 0);

        for (const TranslationEntry &entry : readTranslations(copy))
            QVERIFY2(entry.type != "unfinished", qPrintable(entry.context + ": " + entry.source +
                                                            " (run tools/update-translations)"));
    }
};

KOLM_TEST_MAIN(TestTranslations)
#include "tst_translations.moc"
