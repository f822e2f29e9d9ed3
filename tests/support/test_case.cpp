#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <mutex>

namespace {

struct Line
{
    QtMsgType type;
    QString text;
};

// Qt on Wine, about every window that is drawn by the processor.
const QLatin1String missingInWine("EnableNonClientDpiScaling() failed for HWND ");

// Of the standard library: a thread sanitizer cannot see into Qt's.
std::mutex logMutex;
QList<Line> logLines;
QtMessageHandler previousHandler = nullptr;

void collect(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    {
        const std::lock_guard<std::mutex> lock(logMutex);
        logLines.append({type, text});
    }
    if (type == QtFatalMsg && previousHandler)
        previousHandler(type, context, text);
}

} // namespace

struct TestCase::Private
{
    QStringList announced;
    QString startDir = QDir::currentPath();
    std::unique_ptr<QTemporaryDir> folder;
};

TestCase::TestCase() : d(std::make_unique<Private>()) {}

TestCase::~TestCase() = default;

void TestCase::announce(const QString &text)
{
    d->announced.append(text);
}

QStringList TestCase::logged() const
{
    const std::lock_guard<std::mutex> lock(logMutex);
    QStringList texts;
    for (const Line &line : qAsConst(logLines))
        texts.append(line.text);
    return texts;
}

int TestCase::loggedCount(const QString &text) const
{
    return logged().count(text);
}

void TestCase::clearLog()
{
    const std::lock_guard<std::mutex> lock(logMutex);
    logLines.clear();
}

QString TestCase::dir() const
{
    return d->folder->path();
}

QString TestCase::path(const QString &name) const
{
    return d->folder->filePath(name);
}

void TestCase::writeFile(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

QByteArray TestCase::readFile(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QJsonObject TestCase::readJson(const QString &name) const
{
    return QJsonDocument::fromJson(readFile(name)).object();
}

void TestCase::init()
{
    d->folder = std::make_unique<QTemporaryDir>(QDir::tempPath() +
                                                QString::fromUtf8("/kolm 中 文 & é XXXXXX"));
    QVERIFY(d->folder->isValid());
    QVERIFY(QDir::setCurrent(d->folder->path()));
    d->announced.clear();
    clearLog();
    previousHandler = qInstallMessageHandler(collect);
}

void TestCase::cleanup()
{
    qInstallMessageHandler(previousHandler);
    QDir::setCurrent(d->startDir);
    QList<Line> lines;
    {
        const std::lock_guard<std::mutex> lock(logMutex);
        lines.swap(logLines);
    }
    for (const Line &line : qAsConst(lines)) {
        if (line.type != QtWarningMsg && line.type != QtCriticalMsg)
            continue;
        if (line.text.startsWith(missingInWine))
            continue;
        const bool expected = d->announced.removeOne(line.text);
        QVERIFY2(expected, qPrintable("unexpected log line: " + line.text));
    }
    QVERIFY2(d->announced.isEmpty(),
             qPrintable("announced, but never logged: " + d->announced.join(" | ")));
}
