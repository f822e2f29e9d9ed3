#include "checks/table.h"
#include "tests/guide/guide_page.h"
#include "tests/support/test_case.h"
#include "tests/support/translations.h"

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>

namespace {

QString source(const QString &path)
{
    return QStringLiteral(KOLM_SOURCE_DIR "/") + path;
}

GuidePage pageIn(const QString &language)
{
    return readGuidePage(source("guide/" + language + ".html"));
}

QString contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// The first group of each match.
QStringList matches(const QString &text, const QString &pattern)
{
    QStringList found;
    QRegularExpressionMatchIterator all = QRegularExpression(pattern).globalMatch(text);
    while (all.hasNext())
        found << all.next().captured(1);
    return found;
}

QStringList filesIn(const QStringList &folders, const QString &pattern)
{
    QStringList files;
    for (const QString &folder : folders) {
        QDirIterator all(source(folder), {pattern}, QDir::Files, QDirIterator::Subdirectories);
        while (all.hasNext())
            files << all.next();
    }
    return files;
}

// What all checks say, and what is offered for them.
QStringList textsOfChecks()
{
    QStringList texts;
    for (const checks::Check &check : checks::table()) {
        for (const char *text : {check.title, check.text, check.action.label})
            texts << QString::fromUtf8(text);
    }
    texts.removeAll(QString());
    return texts;
}

// The titles of all dialogs, and everything in those that come while one waits and
// when the program is started twice.
QStringList textsOfDialogs()
{
    QStringList texts;
    for (const QString &file : filesIn({"qml/windows"}, "*.qml"))
        texts << matches(contentOf(file), R"re(\btitle: qsTr\("([^"]+)"\))re");
    for (const char *file : {"WaitNotice.qml", "SingleAppTip.qml"})
        texts << matches(contentOf(source(QLatin1String("qml/windows/") + file)),
                         R"re(qsTr\("([^"]+)"\))re");
    return texts;
}

// What is shown for a moment: the Chinese words of each call.
QStringList textsOfToasts()
{
    QStringList texts;
    const QStringList files = filesIn({"controller", "steamvr", "usb", "link", "cloud"}, "*.cpp") +
                              filesIn({"qml"}, "*.qml");
    for (const QString &file : files) {
        for (const QString &call : matches(contentOf(file), R"re(\b(?:t|showT)oast\(([^;}]*))re"))
            texts << matches(call, R"re("([^"]*\p{Han}[^"]*)")re");
    }
    return texts;
}

// What a text may look like once its placeholders are filled in.
QString filledIn(const QString &text)
{
    return QRegularExpression::escape(text.simplified())
        .replace(QRegularExpression(R"re((\\%|%)\d)re"), ".{1,80}?");
}

} // namespace

// The guide speaks of the program in the program's own words, and of all that it shows.
class TestGuide : public TestCase
{
    Q_OBJECT

    static void languages()
    {
        QTest::addColumn<QString>("language");
        for (const char *language : {"zh", "en", "ja"})
            QTest::newRow(language) << language;
    }

    // The texts of the program in a language, by their source texts.
    static QHash<QString, QString> programIn(const QString &language)
    {
        QHash<QString, QString> texts;
        const QString file = language == "ja" ? "japanese.ts" : "chinese.ts";
        for (const TranslationEntry &entry : readTranslations(source("translations/" + file)))
            texts.insert(entry.source, language == "zh" ? entry.source : entry.translation);
        return texts;
    }

    static void sayAll(const QStringList &texts, int atLeast)
    {
        QFETCH(QString, language);
        QVERIFY2(texts.size() >= atLeast, "the sources are written in another way now");
        const GuidePage page = pageIn(language);
        const QHash<QString, QString> program = programIn(language);
        for (const QString &text : texts) {
            const QString said = program.value(text);
            QVERIFY2(!said.isEmpty(), qPrintable("the program has no such text: " + text));
            QVERIFY2(page.text.contains(QRegularExpression(filledIn(said))),
                     qPrintable("guide/" + language + ".html does not have: " + said));
        }
    }

private slots:
    void everyCheckIsExplained_data() { languages(); }
    void everyCheckIsExplained() { sayAll(textsOfChecks(), 40); }

    void everyDialogIsExplained_data() { languages(); }
    void everyDialogIsExplained() { sayAll(textsOfDialogs(), 25); }

    void everyToastIsExplained_data() { languages(); }
    void everyToastIsExplained() { sayAll(textsOfToasts(), 17); }

    // What is marked as the program's own words is what the program says.
    void noWordIsThePagesOwn_data() { languages(); }
    void noWordIsThePagesOwn()
    {
        QFETCH(QString, language);
        QStringList known;
        for (const QString &text : programIn(language))
            known << filledIn(text);
        const QRegularExpression any("^(" + known.join('|') + ")$");
        QVERIFY2(any.isValid(), qPrintable(any.errorString()));
        const GuidePage page = pageIn(language);
        QVERIFY(page.program.size() > 100);
        for (const QString &words : page.program)
            QVERIFY2(
                any.match(words).hasMatch(),
                qPrintable("guide/" + language + ".html has, and the program has not: " + words));
    }

    void everyPageIsInItsLanguage()
    {
        QCOMPARE(pageIn("zh").language, QString("zh-CN"));
        QCOMPARE(pageIn("en").language, QString("en"));
        QCOMPARE(pageIn("ja").language, QString("ja"));
        QVERIFY(!QRegularExpression("[\\x{3000}-\\x{9FFF}\\x{FF00}-\\x{FFEF}]")
                     .match(pageIn("en").text.remove("中文").remove("日本語"))
                     .hasMatch());
        QVERIFY(!QRegularExpression("[\\x{3040}-\\x{30FF}]").match(pageIn("zh").text).hasMatch());
    }

    void allHaveTheSameSectionsAndTheSameLook_data() { languages(); }
    void allHaveTheSameSectionsAndTheSameLook()
    {
        QFETCH(QString, language);
        const GuidePage page = pageIn(language);
        QCOMPARE(page.error, QString());
        QVERIFY(page.outline.contains("section#install") && page.outline.contains("section#help"));
        QCOMPARE(QSet<QString>(page.outline.begin(), page.outline.end()).size(),
                 page.outline.size());
        QCOMPARE(page.outline, pageIn("zh").outline);
        QCOMPARE(page.style, pageIn("zh").style);
        QVERIFY(page.style.contains("prefers-color-scheme: dark"));
    }

    void everyLinkLeadsSomewhereBesideThePage_data() { languages(); }
    void everyLinkLeadsSomewhereBesideThePage()
    {
        QFETCH(QString, language);
        const GuidePage page = pageIn(language);
        const QString places = page.outline.join(' ') + ' ';
        QVERIFY(!page.links.isEmpty());
        for (const QString &link : page.links) {
            const bool there = link.startsWith('#') ? places.contains(link + ' ')
                                                    : QFile::exists(source("guide/" + link));
            QVERIFY2(there, qPrintable(link));
        }
        for (const char *other : {"zh.html", "en.html", "ja.html"})
            QVERIFY2(page.links.contains(other), other);
    }

    void nothingIsFetched_data() { languages(); }
    void nothingIsFetched()
    {
        QFETCH(QString, language);
        const GuidePage page = pageIn(language);
        QCOMPARE(page.foreign, QStringList());
        QVERIFY(!page.style.contains("url(") && !page.style.contains("@import"));
        QVERIFY(!contentOf(source("guide/" + language + ".html")).contains("://"));
    }
};

KOLM_TEST_MAIN(TestGuide)
#include "tst_guide.moc"
