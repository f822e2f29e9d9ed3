// What a line in the log costs, beside the bare system calls that open a file,
// append the same bytes and close it. Both take turns, so that whatever else
// the machine does meets both.
#include "app/log_file.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int rounds = 101;
constexpr int linesPerRound = 500;

// Every line falls into another second, so that nothing is left over from the
// line before: the price of a line that comes alone.
class LeapingClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime::fromMSecsSinceEpoch(epochMilliseconds()); }
    qint64 epochMilliseconds() const override { return time_ += 1000; }
    qint64 elapsed() const override { return 0; }
    void sleep(std::chrono::milliseconds) override {}
    void singleShot(std::chrono::milliseconds, QObject *, std::function<void()>) override {}
    int startTimer(std::chrono::milliseconds, QObject *, Qt::TimerType) override { return 0; }
    void killTimer(int, QObject *) override {}

private:
    mutable qint64 time_ = 1715940000000;
};

void appendBare(const char *path, const char *bytes, size_t size)
{
    const int file = ::open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (::write(file, bytes, size) != static_cast<ssize_t>(size))
        std::perror("write");
    ::close(file);
}

// Microseconds a call.
template <typename Function>
double measure(Function &&function)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < linesPerRound; ++i)
        function();
    const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - start;
    return time.count() / linesPerRound;
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// The product's own handler, writing into a folder below `dataHome`.
QtMessageHandler productHandler(const QString &dataHome)
{
    qputenv("XDG_DATA_HOME", QFile::encodeName(dataHome));
    QCoreApplication::setOrganizationName(QStringLiteral("KOLM"));
    QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
    installLogFile();
    return qInstallMessageHandler(nullptr);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    const QTemporaryDir bareDir;
    const QTemporaryDir dataHome;
    const QTemporaryDir loneDir;
    const QByteArray barePath = QFile::encodeName(bareDir.filePath("2024-05-17.txt"));
    const QString text = QStringLiteral("[steam]checkSteam end, waiting for the streaming server");
    const QMessageLogContext context;
    const QByteArray line =
        logLine(QtInfoMsg, context, QTime(14, 3, 7, 215), text).toLocal8Bit() + "\r\n";

    const QtMessageHandler handler = productHandler(dataHome.path());
    LeapingClock leaping;
    LogFile loneLog(loneDir.path(), leaping);
    std::vector<double> bare;
    std::vector<double> logged;
    std::vector<double> lone;
    std::vector<double> ratios;
    for (int i = 0; i < rounds; ++i) {
        bare.push_back(measure(
            [&] { appendBare(barePath, line.constData(), static_cast<size_t>(line.size())); }));
        logged.push_back(measure([&] { handler(QtInfoMsg, context, text); }));
        lone.push_back(measure([&] { loneLog.write(QtInfoMsg, context, text); }));
        ratios.push_back(logged.back() / bare.back());
    }
    std::printf("log_line_bare_calls %.3f us -\n", median(bare));
    std::printf("log_line %.3f us -\n", median(logged));
    std::printf("log_line_ratio %.2f x 1.50\n", median(ratios));
    std::printf("log_line_alone_in_its_second %.3f us -\n", median(lone));

    // Lines that went nowhere would be the fastest.
    const QStringList files =
        QDir(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation))
            .entryList(QDir::Files);
    return files.isEmpty() ? 1 : 0;
}
