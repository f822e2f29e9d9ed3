// Where the vendor cloud is.
#pragma once

#include <QString>

namespace cloud {

// The host of the vendor cloud, with a port where it is not the usual one:
// "cloud.example.com" or "127.0.0.1:18443". It was chosen when the program was
// built (KOLM_CLOUD_HOST), unless useHost() has named another. Empty: there is
// none, and nobody is asked. Any thread.
QString host();

// Leads to another host for the rest of the process. For who puts the program
// together, before anything speaks to the cloud: HttpManager's one instance
// keeps the host that it was made with. Any thread.
void useHost(const QString &host);

} // namespace cloud
