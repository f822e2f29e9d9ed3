#include "simpc/sim_launches.h"

#include "simpc/sim_record.h"
#include "simpc/sim_timeline.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace {

QString baseName(const QString &program)
{
    const int slash = std::max(program.lastIndexOf('/'), program.lastIndexOf('\\'));
    return program.mid(slash + 1).toLower();
}

} // namespace

void SimLaunches::on(const QString &programName, Handler handler)
{
    const MutexLock lock(mutex_);
    handlers_[programName.toLower()] = std::move(handler);
}

SimLaunchResult SimLaunches::start(const SimLaunch &request)
{
    timeline_.settle();
    journal_.add("launch " + request.program + (request.parameters.isEmpty() ? "" : " ") +
                 request.parameters + (request.hidden ? " (hidden)" : "") +
                 (request.elevated ? " (elevated)" : "") +
                 (request.workingDir.isEmpty() ? "" : " in " + request.workingDir));
    Handler handler;
    {
        const MutexLock lock(mutex_);
        handler = handlers_.value(baseName(request.program));
    }
    // What was really downloaded can be started, and does nothing.
    if (!handler && QFileInfo(request.program).isFile())
        return {};
    if (!handler)
        return {false, 2, false, 0};
    const SimTimeline::OneAtATime oneAtATime = timeline_.oneAtATime();
    return handler(request);
}
