#include "pc/network_profile.h"

#include "pc/system_programs.h"

namespace network_profile {

Query query()
{
    return {system_programs::pathOf(QStringLiteral("powershell")),
            {QStringLiteral("/c"),
             QStringLiteral("Get-NetConnectionProfile | findstr NetworkCategory")}};
}

} // namespace network_profile
