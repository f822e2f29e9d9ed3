#include "cloud/cloud_host.h"

QString cloud::host()
{
    return qEnvironmentVariable("SIMPC_CLOUD_HOST", QStringLiteral(KOLM_CLOUD_HOST));
}
