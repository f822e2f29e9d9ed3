#include "simpc/server_process.h"

#include "pc/own_variables.h"

#include <QProcess>

#include <csignal>

#include <sys/prctl.h>
#include <unistd.h>

namespace {

constexpr int startsWithin = 5000;
constexpr int endsWithin = 2000;

} // namespace

class ServerProcess::Child final : public QProcess
{
protected:
    void setupChildProcess() override
    {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        // The parent may have gone before the line above.
        if (getppid() != parent_)
            _exit(1);
    }

private:
    const pid_t parent_ = getpid();
};

ServerProcess::ServerProcess() = default;

ServerProcess::~ServerProcess()
{
    end();
}

bool ServerProcess::begin(const QString &program, const QStringList &arguments)
{
    end();
    child_ = std::make_unique<Child>();
    QObject::connect(child_.get(), &QProcess::stateChanged, child_.get(),
                     [this](QProcess::ProcessState state) {
                         if (state == QProcess::NotRunning)
                             pid_ = 0;
                     });
    child_->setStandardInputFile(QProcess::nullDevice());
    child_->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child_->setStandardOutputFile(QProcess::nullDevice());
    child_->setProcessEnvironment(own_variables::forChildren());
    child_->start(program, arguments);
    if (!child_->waitForStarted(startsWithin))
        return false;
    pid_ = child_->processId();
    return true;
}

void ServerProcess::end()
{
    if (!child_)
        return;
    if (child_->state() != QProcess::NotRunning) {
        child_->terminate();
        if (!child_->waitForFinished(endsWithin)) {
            child_->kill();
            child_->waitForFinished();
        }
    }
    child_.reset();
    pid_ = 0;
}
