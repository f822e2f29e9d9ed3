#include "app/log_file.h"

#include "base/last_lines.h"
#include "pc/append_file.h"
#include "pc/crash_trap.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QScopedValueRollback>
#include <QStandardPaths>

#include <array>
#include <charconv>
#include <utility>

namespace {

const QLatin1String lineEnd("\r\n");

QLatin1String levelWord(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return QLatin1String("Debug:");
    case QtWarningMsg:
        return QLatin1String("Warning:");
    case QtCriticalMsg:
        return QLatin1String("Critical:");
    case QtFatalMsg:
        return QLatin1String("Fatal:");
    case QtInfoMsg:
        return QLatin1String("Info:");
    }
    return QLatin1String("");
}

// "14:03:07.215". By hand, because QTime::toString() alone takes as long as the
// system calls that write the line.
std::array<char, 12> timeText(QTime time)
{
    std::array<char, 12> text{};
    const auto put = [&text](size_t end, int number, int digits, char before) {
        for (; digits > 0; --digits, number /= 10)
            text[--end] = static_cast<char>('0' + number % 10);
        if (before)
            text[--end] = before;
    };
    put(2, time.hour(), 2, '\0');
    put(5, time.minute(), 2, ':');
    put(8, time.second(), 2, ':');
    put(12, time.msec(), 3, '.');
    return text;
}

// Where the product logs. The system is asked once for each pair of names.
class ProductFolder
{
public:
    QString operator()()
    {
        const QString organization = QCoreApplication::organizationName();
        const QString application = QCoreApplication::applicationName();
        if (folder_.isEmpty() || organization != organization_ || application != application_) {
            organization_ = organization;
            application_ = application;
            folder_ = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
        }
        return folder_;
    }

private:
    QString organization_;
    QString application_;
    QString folder_;
};

void writeToLogFile(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    // Never destroyed: the destructors of other statics log as well.
    static LogFile &file = *new LogFile(ProductFolder(), Clock::system());
    file.write(type, context, message);
    // Qt ends the process after this, on some systems without another word.
    if (type == QtFatalMsg)
        crash_trap::report("fatal message of Qt");
}

} // namespace

QString logLine(QtMsgType type, const QMessageLogContext &context, QTime time,
                const QString &message)
{
    const std::array<char, 12> when = timeText(time);
    std::array<char, 12> number{};
    const char *const numberEnd =
        std::to_chars(number.data(), number.data() + number.size(), context.line).ptr;

    QString line;
    line.reserve(message.size() + 64);
    line += QLatin1Char('[');
    line += levelWord(type);
    line += QLatin1String(when.data(), static_cast<int>(when.size()));
    line += QLatin1String("  \"");
    if (context.file)
        line += QString::fromUtf8(context.file);
    line += QLatin1Char('(');
    line += QLatin1String(number.data(), static_cast<int>(numberEnd - number.data()));
    line += QLatin1String(")\"]:");
    line += message;
    return line;
}

QString logFileName(QDate date)
{
    return date.toString(QStringLiteral("/yyyy-MM-dd.'txt'"));
}

LogFile::LogFile(Folder folder, Clock &clock) : folder_(std::move(folder)), clock_(clock) {}

LogFile::LogFile(const QString &folder, Clock &clock) : LogFile([folder] { return folder; }, clock)
{
}

void LogFile::write(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    static thread_local bool writing = false;
    if (writing)
        return;
    const QScopedValueRollback<bool> guard(writing, true);
    const MutexLock lock(mutex_);

    const QTime time = takeTime();
    const QString folder = folder_();
    if (folder != folderOfPath_ || date_ != dateOfPath_) {
        path_ = folder + logFileName(date_);
        folderOfPath_ = folder;
        dateOfPath_ = date_;
    }
    QString line = logLine(type, context, time, message);
    const QByteArray bytes = line.toLocal8Bit();
    last_lines::add(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    appendToFile(path_, bytes + lineEnd.data());
}

// The local time of the line being written; its day is in date_.
QTime LogFile::takeTime()
{
    const qint64 now = clock_.epochMilliseconds();
    // Offsets from UTC change only between whole seconds.
    if (now / 1000 != second_) {
        second_ = now / 1000;
        const QDateTime local = QDateTime::fromMSecsSinceEpoch(second_ * 1000);
        date_ = local.date();
        time_ = local.time();
    }
    return time_.addMSecs(static_cast<int>(now % 1000));
}

void installLogFile()
{
    qInstallMessageHandler(writeToLogFile);
}
