// Copies of a program that asks whether it is the first.
#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QTest>

#include <memory>

constexpr int timeout = 20000; // ms

// A copy of the program and what it says it is.
struct Copy
{
    std::unique_ptr<QProcess> process;
    QByteArray is;
};

inline Copy
startCopy(const QStringList &arguments = {},
          const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
{
    Copy copy{std::make_unique<QProcess>(), QByteArray()};
    copy.process->setProcessEnvironment(environment);
    copy.process->start(QStringLiteral(KOLM_TEST_LOCK_HOLDER), arguments);
    while (!copy.process->canReadLine() && copy.process->waitForReadyRead(timeout)) {
    }
    copy.is = copy.process->readLine().trimmed();
    return copy;
}

inline void end(Copy *copy)
{
    copy->process->closeWriteChannel();
    QVERIFY(copy->process->waitForFinished(timeout));
    QCOMPARE(copy->process->exitStatus(), QProcess::NormalExit);
}
