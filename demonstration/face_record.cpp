#include "demonstration/face_record.h"

#include "base/clock.h"
#include "demonstration/signal_spy.h"
#include "demonstration/written_files.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QStandardPaths>
#include <QThread>

#include <atomic>
#include <cstdlib>
#include <iostream>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace {

// The file, and what is noticed on the way. The log goes on after main(), so
// this is never destroyed.
class Record
{
public:
    explicit Record(const QString &path) : file_(path)
    {
        if (!file_.open(QIODevice::WriteOnly | QIODevice::Append))
            std::cerr << "simpc: cannot write " << path.toStdString() << std::endl;
    }

    void watchFolder(const QString &path) { written_.watch(path); }

    // What was written until now comes first.
    void say(const QString &line)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        const QStringList news = written_.news();
        for (const QString &each : news)
            put(QStringLiteral("file"), each);
        put(thread(), line);
        file_.flush();
    }

    // On the GUI thread something else begins, or goes on; what it was before.
    quint64 beginTurn(quint64 number) { return turn_.exchange(number); }

    void finish()
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        const QStringList news = written_.news();
        for (const QString &each : news)
            put(QStringLiteral("file"), each);
        put(QStringLiteral("end"), {});
        file_.flush();
    }

private:
    QString thread() const
    {
        if (std::this_thread::get_id() == gui_)
            return QStringLiteral("gui");
        const QThread *const current = QThread::currentThread();
        if (!current->objectName().isEmpty())
            return current->objectName();
        return QString::fromLatin1(current->metaObject()->className());
    }

    void put(const QString &who, QString line)
    {
        line.replace('\\', QLatin1String("\\\\")).replace('\r', QLatin1String("\\r"));
        line.replace('\n', QLatin1String("\\n"));
        const double seconds = static_cast<double>(Clock::system().elapsed() - began_) / 1000;
        file_.write(QStringLiteral("%1\t%2\t%3\t%4\n")
                        .arg(seconds, 9, 'f', 3)
                        .arg(turn_)
                        .arg(who, line)
                        .toUtf8());
    }

    const qint64 began_ = Clock::system().elapsed();
    const std::thread::id gui_ = std::this_thread::get_id();
    std::atomic<quint64> turn_{0};
    std::mutex mutex_; // guards what follows
    QFile file_;
    WrittenFiles written_;
};

// Those that are logged whenever they are read, counted, or work something out
// and keep it. The log says what the pages get when they read them.
const QStringList unread = {
    QStringLiteral("pcHardware"), QStringLiteral("fpsIndex"),   QStringLiteral("definitionIndex"),
    QStringLiteral("encodeType"), QStringLiteral("widthIndex"), QStringLiteral("heightIndex"),
};

Record *record = nullptr;
QtMessageHandler logFile = nullptr;

// What happens for one reason happens within one of these events. A window that
// is shown lets others in meanwhile: each has a number of its own, by when it
// began. Each is handed on from here, for its end to be seen.
class Turns : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Timer && event->type() != QEvent::MetaCall &&
            event->type() != QEvent::SockAct)
            return false;
        const quint64 before = record->beginTurn(++last_);
        watched->event(event);
        record->beginTurn(before);
        return true;
    }

private:
    quint64 last_ = 0;
};

const char *levelWord(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "Debug";
    case QtInfoMsg:
        return "Info";
    case QtWarningMsg:
        return "Warning";
    case QtCriticalMsg:
        return "Critical";
    case QtFatalMsg:
        break;
    }
    return "Fatal";
}

void onLogLine(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (!SignalSpy::reading().isEmpty())
        record->say("this record's own reading is logged: " + SignalSpy::reading());
    record->say(QStringLiteral("log %1: %2").arg(QLatin1String(levelWord(type)), message));
    logFile(type, context, message);
}

} // namespace

void face_record::begin()
{
    const QString path = qEnvironmentVariable("SIMPC_FACE");
    if (path.isEmpty() || record)
        return;
    record = new Record(path);
    record->watchFolder(QDir::currentPath());
    record->watchFolder(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
    record->watchFolder(QDir::homePath() + QStringLiteral("/AppData/Local/openvr"));
    logFile = qInstallMessageHandler(onLogLine);
    QCoreApplication::instance()->installEventFilter(new Turns(QCoreApplication::instance()));
    std::atexit([] { record->finish(); });
}

void face_record::follow(QQmlApplicationEngine &engine)
{
    if (!record)
        return;
    const std::vector<std::pair<QString, QStringList>> leftAlone = {
        {QStringLiteral("orb"), unread},
        {QStringLiteral("orbupdate"), unread},
        // Its properties say the same.
        {QStringLiteral("orbstages"), {QStringLiteral("rows")}},
        {QStringLiteral("orbchecks"), {}},
    };
    for (const auto &[called, unreadOfIt] : leftAlone) {
        auto *const object = engine.rootContext()->contextProperty(called).value<QObject *>();
        if (!object)
            continue;
        auto *const spy = new SignalSpy(*object, called, unreadOfIt, &engine);
        spy->begin([](const QString &line) { record->say(line); });
    }
}
