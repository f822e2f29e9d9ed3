#include "cloud/cloud_host.h"

#include <mutex>

namespace {

struct Host
{
    std::mutex mutex;
    QString name = QStringLiteral(KOLM_CLOUD_HOST); // guarded by the mutex
};

Host &current()
{
    static Host host;
    return host;
}

} // namespace

QString cloud::host()
{
    const std::lock_guard<std::mutex> lock(current().mutex);
    return current().name;
}

void cloud::useHost(const QString &host)
{
    const std::lock_guard<std::mutex> lock(current().mutex);
    current().name = host;
}
