#include "tests/e2e/program.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QRegularExpression>

#include <csignal>

#include <sys/types.h>

Program::Program(const QString &dir, const QString &scenario)
    : dir_(dir), home_(dir + "/home"), work_(dir + "/work")
{
    QDir().mkpath(home_);
    QDir().mkpath(work_);
    QDir().mkpath(dir + "/run");
    if (QProcess::execute(SEED, {scenario, "--home", home_, "--work", work_}) != 0)
        qFatal("the scenario cannot be laid out");
    environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", home_);
    environment.insert("XDG_DATA_HOME", home_ + "/.local/share");
    environment.insert("XDG_RUNTIME_DIR", dir + "/run");
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("QT_QUICK_BACKEND", "software");
    environment.insert("LC_ALL", "C.UTF-8");
    environment.insert("SIMPC_SCENARIO", scenario);
    environment.insert("SIMPC_CLOUD_HOST", "127.0.0.1:1"); // nobody
    environment.insert("SIMPC_SPEED", QString::number(testSpeed));
    environment.insert("SIMPC_PROGRESS", "1");
    environment.insert("SIMPC_SERVER_LOG", dir + "/server.log");
    environment.insert("SIMPC_SCREENSHOT", screenshot());
    // Half a minute at this speed: only a machine that hangs meets it.
    environment.insert("SIMPC_LIMIT", "600");
}

Program::~Program()
{
    kill();
}

bool Program::start()
{
    process_.setProcessEnvironment(environment);
    process_.setWorkingDirectory(work_);
    process_.start(PROGRAM, arguments);
    return process_.waitForStarted();
}

int Program::wait(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (process_.state() != QProcess::NotRunning) {
        const int left = milliseconds - static_cast<int>(timer.elapsed());
        if (left <= 0) {
            qWarning("the program has not ended in time");
            return -1;
        }
        process_.waitForFinished(left);
    }
    collect();
    if (process_.exitStatus() == QProcess::NormalExit)
        return process_.exitCode();
    qWarning("the program has crashed: %s", errors_.constData());
    return -1;
}

bool Program::waitForOutput(const QString &text, int times, int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (output().count(text) < times) {
        const int left = milliseconds - static_cast<int>(timer.elapsed());
        if (left <= 0 || process_.state() == QProcess::NotRunning)
            return output().count(text) >= times;
        process_.waitForReadyRead(left);
    }
    return true;
}

QString Program::tell(const QString &line, int milliseconds)
{
    return tellAll({line}, {}, milliseconds).first();
}

QStringList Program::tellAll(const QStringList &lines, const std::function<void()> &meanwhile,
                             int milliseconds)
{
    const QString mark = QStringLiteral("directed: ");
    const int before = output().count(mark);
    process_.write(lines.join('\n').toUtf8() + '\n');
    if (meanwhile) {
        process_.waitForBytesWritten();
        meanwhile();
    }
    waitForOutput(mark, before + lines.size(), milliseconds);
    QStringList answers;
    for (int i = 1; i <= lines.size(); ++i) {
        // The line of the answer may still be on its way.
        QString said = output().section(mark, before + i, before + i);
        while (!said.contains('\n') && process_.waitForReadyRead(1000))
            said = output().section(mark, before + i, before + i);
        answers << said.section('\n', 0, 0);
    }
    return answers;
}

int Program::close()
{
    signal(SIGTERM);
    return wait();
}

void Program::signal(int number)
{
    if (process_.state() != QProcess::NotRunning)
        ::kill(static_cast<pid_t>(process_.processId()), number);
}

void Program::kill()
{
    if (process_.state() != QProcess::NotRunning) {
        process_.kill();
        process_.waitForFinished();
    }
}

void Program::collect()
{
    output_ += process_.readAllStandardOutput();
    errors_ += process_.readAllStandardError();
}

QString Program::output()
{
    collect();
    return QString::fromUtf8(output_);
}

QString Program::errors()
{
    collect();
    return QString::fromUtf8(errors_);
}

QStringList Program::progress()
{
    QStringList lines;
    const QStringList all = output().split('\n').filter(QRegularExpression("^progress: "));
    for (const QString &line : all)
        lines << line.section(" s  ", 1);
    return lines;
}

QString Program::dataDir() const
{
    return home_ + "/.local/share/KOLM/KOLM_Streaming_Assistant";
}

QByteArray Program::read(const QString &path) const
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QJsonObject Program::json(const QString &path) const
{
    return QJsonDocument::fromJson(read(path)).object();
}

QString Program::log() const
{
    QString text;
    const QStringList files = QDir(dataDir()).entryList({"*-*-*.txt"}, QDir::Files, QDir::Name);
    for (const QString &file : files)
        text += QString::fromUtf8(read(dataDir() + '/' + file));
    return text;
}

QString Program::serverLog() const
{
    return QString::fromUtf8(read(dir_ + "/server.log"));
}

QStringList Program::journal()
{
    return progress().filter(QRegularExpression("^(launch|cell write|terminate) "));
}

QString Program::screenshot() const
{
    return dir_ + "/window.png";
}
