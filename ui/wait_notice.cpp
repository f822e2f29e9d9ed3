#include "ui/wait_notice.h"

#include <QDebug>
#include <QProcess>

#include <utility>

namespace wait_notice {

namespace {

using long_wait::Choice;

const QString option = QStringLiteral("--wait-notice");
const QString canEnd = QStringLiteral("end");
const QString cannotEnd = QStringLiteral("keep");
constexpr int startLimit = 2000; // ms
constexpr int endLimit = 1000;   // ms, of a process that is killed

Choice choiceOf(const QProcess &process)
{
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == exitEndPrograms)
        return Choice::EndPrograms;
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == exitGoOn)
        return Choice::GoOn;
    return Choice::KeepWaiting; // closed, or it could not be shown
}

class NoticeProcess final : public long_wait::Telling
{
public:
    ~NoticeProcess() override
    {
        process_.kill();
        process_.waitForFinished(endLimit);
    }

    bool start(const QString &program, const Request &request)
    {
        process_.setStandardOutputFile(QProcess::nullDevice());
        process_.setStandardErrorFile(QProcess::nullDevice());
        process_.start(program, arguments(request));
        return process_.waitForStarted(startLimit);
    }

    std::optional<Choice> choice() override
    {
        if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(0))
            return std::nullopt;
        return choiceOf(process_);
    }

private:
    QProcess process_;
};

} // namespace

QStringList arguments(const Request &request)
{
    return {option, request.subject.key, QString::number(request.lasted.count()),
            request.subject.canEnd ? canEnd : cannotEnd};
}

std::optional<Request> request(const QStringList &arguments)
{
    if (arguments.size() != 4 || arguments[0] != option)
        return std::nullopt;
    bool isNumber = false;
    const std::chrono::milliseconds lasted(arguments[2].toLongLong(&isNumber));
    if (!isNumber || lasted.count() < 0)
        return std::nullopt;
    return Request{{arguments[1], arguments[3] == canEnd}, lasted};
}

long_wait::Tell byProcess(const QString &program)
{
    return [program](const long_wait::Subject &subject,
                     std::chrono::milliseconds lasted) -> std::unique_ptr<long_wait::Telling> {
        qInfo().noquote() << "[wait]" << subject.key << "lasts" << lasted.count() << "ms";
        auto notice = std::make_unique<NoticeProcess>();
        if (!notice->start(program, {subject, lasted})) {
            qWarning().noquote() << "[wait] no notice can be shown by" << program;
            return nullptr;
        }
        return notice;
    };
}

} // namespace wait_notice
