#include "tests/e2e/program.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>

namespace {

QList<QByteArray> fields(qint64 pid, const char *file, char separator)
{
    QFile opened(QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(file)));
    return opened.open(QIODevice::ReadOnly) ? opened.readAll().split(separator)
                                            : QList<QByteArray>();
}

// With its children's children.
QList<qint64> childrenOf(qint64 pid)
{
    QList<qint64> all;
    for (const QString &task :
         QDir(QStringLiteral("/proc/%1/task").arg(pid)).entryList({"[0-9]*"}, QDir::Dirs)) {
        const QByteArray list =
            fields(pid, qPrintable("task/" + task + "/children"), '\n').value(0);
        for (const QByteArray &child : list.split(' ')) {
            if (child.isEmpty())
                continue;
            all.append(child.toLongLong());
            all += childrenOf(child.toLongLong());
        }
    }
    return all;
}

} // namespace

// What the program starts, and what that starts, in its own words to the system.
class TestChildren : public TestCase
{
    Q_OBJECT

private slots:
    void noneIsToldHowTheProgramDraws_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QString>("child"); // that there is
        QTest::newRow("the streaming server") << "one-headset"
                                              << "streaming-server";
        QTest::newRow("adb") << "wired-adb-hangs"
                             << "adb";
    }
    void noneIsToldHowTheProgramDraws()
    {
        QFETCH(QString, scenario);
        QFETCH(QString, child);
        Program program(dir(), scenario);
        program.environment.insert("KOLM_TEST_SHARED", "yes");
        QVERIFY(program.start());
        bool seen = false;
        const auto look = [&] {
            for (const qint64 pid : childrenOf(program.pid())) {
                const QList<QByteArray> environment = fields(pid, "environ", '\0');
                const QString name = QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(pid));
                for (const QByteArray &variable : environment) {
                    if (variable.startsWith("QSG_ATLAS"))
                        return name + " has " + variable;
                }
                seen =
                    seen || (name.contains(child) && environment.contains("KOLM_TEST_SHARED=yes"));
            }
            return QString();
        };
        QString wrong;
        QTRY_VERIFY_WITH_TIMEOUT(!(wrong = look()).isEmpty() || seen, 60000);
        QCOMPARE(wrong, QString());
        program.kill();
    }
};

KOLM_TEST_MAIN(TestChildren)
#include "tst_children.moc"
