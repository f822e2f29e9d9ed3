#include "cloud/cloud_host.h"

QString cloud::host()
{
    return QStringLiteral(KOLM_CLOUD_HOST);
}
