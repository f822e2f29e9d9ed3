#include "usb/adb_manger.h"

#include "base/clock.h"
#include "pc/adb_shell.h"
#include "pc/grouped_process.h"
#include "pc/own_variables.h"
#include "sysinfo/system_info.h"
#include "usb/usb_watcher.h"

#include <QDebug>
#include <QDir>

#include <chrono>
#include <utility>

using adb_rules::Answer;
using adb_rules::Check;

using namespace std::chrono_literals;
using std::chrono::milliseconds;

namespace {

constexpr auto versionGrace = 400ms; // for the answer to the version query
constexpr auto queryDelay = 800ms;   // from a check to its query
constexpr auto forwardDelay = 200ms; // until the ports are set up
constexpr auto listDelay = 1s;       // after that until they are listed
constexpr auto idleDelay = 600ms;    // from any output to the idle state
constexpr milliseconds lastCommandLimit = 3s;
// Several devices that arrive together make three checks within a moment. What
// has only just begun does not hang, and may be starting adb's server.
constexpr milliseconds overdueAfter = 3s;

AdbManger::ForeignForwards beforeForwardsGo;

QString adbName()
{
    return QStringLiteral("adb.exe");
}

} // namespace

AdbManger::AdbManger(const Dependencies &dependencies, QObject *parent)
    : QObject(parent), clock_(dependencies.clock), start_(dependencies.start),
      end_(dependencies.end), tell_(dependencies.tell), process_(new GroupedProcess(this)),
      beforeForwardsGo_(dependencies.beforeForwardsGo)
{
    // Said outright: what a QProcess takes by itself loses, on Windows, the letters
    // of folders that the system's code page lacks.
    process_->setProcessEnvironment(own_variables::forChildren());
    chooseAdb();
    connect(process_, &QProcess::readyReadStandardOutput, this, &AdbManger::onOutput);
    connect(this, &AdbManger::checkdevice, this, &AdbManger::checkDevice);
    watcher_ = std::make_unique<UsbWatcher>([this] { emit checkdevice(); });
}

AdbManger::~AdbManger()
{
    dropCommand();
    if (now_.mode == adb_rules::AlreadyRunning)
        takePortsBack();
    else
        killAdb();
    if (!watcher_->stop())
        qInfo("install winproc fail");
    dropCommand();
}

AdbManger &AdbManger::instance()
{
    static AdbManger manager([] {
        Dependencies dependencies{Clock::system()};
        dependencies.tell = long_wait::processTell();
        dependencies.beforeForwardsGo = beforeForwardsGo;
        return dependencies;
    }());
    return manager;
}

void AdbManger::setBeforeForwardsGo(ForeignForwards tell)
{
    beforeForwardsGo = std::move(tell);
}

void AdbManger::tellForwards()
{
    if (beforeForwardsGo_ && !foreignForwards_.isEmpty())
        beforeForwardsGo_(foreignForwards_);
    foreignForwards_.clear();
}

void AdbManger::chooseAdb()
{
    if (!SystemInfo::isProcessRunning(adbName())) {
        now_.mode = adb_rules::OnSearchPath;
        now_.state = adb_rules::AwaitingVersion;
        runAdb(QStringLiteral("adb --version"));
        return;
    }
    now_.mode = adb_rules::AlreadyRunning;
    const QString path = SystemInfo::processPath(adbName());
    useAdb(path, adb_rules::workingFolder(path));
    qInfo("use started adb");
}

void AdbManger::useAdb(const QString &path, const QString &folder)
{
    adbPath_ = path;
    if (!folder.isEmpty())
        process_->setWorkingDirectory(folder);
}

void AdbManger::killAdb()
{
    if (!SystemInfo::isProcessRunning(adbName()))
        return;
    tellForwards();
    long_wait::LongWait wait(clock_, {QStringLiteral("adb"), false}, tell_);
    SystemInfo::killProcesses({adbName()},
                              [&wait] { return wait.turn() != long_wait::Choice::GoOn; });
}

void AdbManger::runAdb(const QString &command)
{
    const char *whose = now_.mode == adb_rules::OnSearchPath ? "adb cmd: " : "adb ORB: ";
    qInfo().noquote().nospace() << whose << command;
    start(adb_rules::commandLine(command, now_.mode, adb_shell::word(adbPath_)));
}

void AdbManger::start(const QString &line)
{
    if (process_->state() == QProcess::NotRunning)
        startedAt_ = clock_.elapsed();
    if (start_) {
        start_(line, process_->workingDirectory());
        return;
    }
    const adb_shell::Call call = adb_shell::call(line);
    process_->startGroup(call.program, call.arguments);
}

bool AdbManger::isOverdue() const
{
    return clock_.elapsed() - startedAt_ >= overdueAfter.count();
}

void AdbManger::endCommand()
{
    if (end_)
        end_();
    else
        process_->endGroup();
}

void AdbManger::checkDevice()
{
    const Check check = adb_rules::check(now_);
    now_ = check.next;
    if (check.useShipped || (check.giveUp && isOverdue()))
        endCommand();
    if (check.useShipped) {
        const QString folder = QDir::currentPath() + QStringLiteral("/ADB/");
        const QString path = folder + adbName();
        useAdb(path, adb_rules::isWord(path) ? QString() : folder);
        qInfo("use ORBHelper adb");
    }
    if (check.action == Check::GiveGrace) {
        clock_.singleShot(versionGrace, this, [this] {
            checkDevice();
            now_.grace = adb_rules::Over;
        });
    } else if (check.action == Check::AskForDevices) {
        clock_.singleShot(queryDelay, this,
                          [this] { runAdb(QStringLiteral("adb devices && adb forward --list")); });
    }
}

void AdbManger::onOutput()
{
    take(adb_shell::withWindowsLineEnds(process_->readAllStandardOutput()));
}

void AdbManger::take(const QByteArray &output)
{
    // Up to a NUL, if there is one.
    const QString text = QString::fromLatin1(output.constData());
    if (text.contains(QLatin1String("List of devices attached")))
        foreignForwards_.clear(); // all that there are come with it
    foreignForwards_ += adb_rules::foreignForwards(text);
    foreignForwards_.removeDuplicates();
    const Answer answer = adb_rules::answer(now_, text);
    now_ = answer.next;
    switch (answer.action) {
    case Answer::Nothing:
        break;
    case Answer::UseLocal:
        qInfo("use local adb");
        break;
    case Answer::RestartAdb:
        killAdb();
        emit showAdbTipToast();
        break;
    case Answer::SetUpPorts:
        setUpPorts();
        break;
    case Answer::ReportGone:
        emit deviceConnect(false, QString());
        break;
    case Answer::ReportHeadset:
        emit deviceConnect(true, now_.serial);
        break;
    }
    clock_.singleShot(idleDelay, this, [this] { now_.state = adb_rules::Idle; });
}

void AdbManger::setUpPorts()
{
    clock_.singleShot(forwardDelay, this, [this] {
        qInfo("forward tcp");
        runAdb(
            QStringLiteral("adb forward tcp:9943 tcp:9943 && adb forward tcp:9944 tcp:9944 && "
                           "adb reverse tcp:50000 tcp:50000 && adb reverse tcp:50001 tcp:50001"));
        clock_.singleShot(listDelay, this, [this] {
            now_.state = adb_rules::Forwarding;
            qInfo("forward list");
            runAdb(QStringLiteral("adb forward --list && adb reverse --list"));
        });
    });
}

// Ends the command at work, the interpreter together with the adb that it waits
// for: with adb alone gone it would go on with the rest of its line, and with
// itself alone gone an adb that hangs would stay for ever.
void AdbManger::dropCommand()
{
    process_->disconnect(this);
    if (process_->state() == QProcess::NotRunning)
        return;
    process_->endGroup();
    process_->waitForFinished(int(lastCommandLimit.count()));
}

// The only command that is waited for: with this object ends the process that
// runs it.
void AdbManger::takePortsBack()
{
    tellForwards();
    runAdb(QStringLiteral("adb forward --remove-all && adb reverse --remove-all"));
    process_->waitForFinished(int(lastCommandLimit.count()));
}
