#include "cloud/cloud_host.h"

#include "base/mutex.h"

namespace {

struct Host
{
    Mutex mutex;
    QString name GUARDED_BY(mutex) = QStringLiteral(KOLM_CLOUD_HOST);
};

Host &current()
{
    static Host host;
    return host;
}

} // namespace

QString cloud::host()
{
    Host &host = current();
    const MutexLock lock(host.mutex);
    return host.name;
}

QString cloud::installerSigner()
{
    return QStringLiteral(KOLM_INSTALLER_SIGNER);
}

void cloud::useHost(const QString &host)
{
    Host &kept = current();
    const MutexLock lock(kept.mutex);
    kept.name = host;
}
