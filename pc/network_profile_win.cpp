#include "pc/network_profile.h"

namespace network_profile {

Query query()
{
    return {QStringLiteral("powershell"),
            {QStringLiteral("/c"),
             QStringLiteral("Get-NetConnectionProfile | findstr NetworkCategory")}};
}

} // namespace network_profile
