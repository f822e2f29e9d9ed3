#include "pc/elevated_launch.h"

#include "simpc/sim_pc.h"

namespace elevated_launch {

qint64 start(const QString &program, const QString &workingDir, const MayStart &mayStart)
{
    if (!mayStart(SimPc::current().facts.installerSigner.get()))
        return refused;
    SimLaunch request;
    request.program = program;
    request.workingDir = workingDir;
    request.elevated = true;
    const SimLaunchResult result = SimPc::current().launches.start(request);
    constexpr qint64 success = 42;
    return result.started ? success : qint64(result.error);
}

} // namespace elevated_launch
