// Where the vendor cloud is, and who signs what comes from it.
#pragma once

#include <QString>

namespace cloud {

// The host of the vendor cloud, with a port where it is not the usual one:
// "cloud.example.com" or "127.0.0.1:18443". It was chosen when the program was
// built (KOLM_CLOUD_HOST), unless useHost() has named another. Empty: there is
// none, and nobody is asked. Any thread.
QString host();

// Who has to have signed an installer that is started, as its certificate says
// (KOLM_INSTALLER_SIGNER). Empty: nobody has to. Any thread.
QString installerSigner();

// Leads to another host for the rest of the process. For who puts the program
// together, before anything speaks to the cloud: HttpManager's one instance
// keeps the host that it was made with. Any thread.
void useHost(const QString &host);

} // namespace cloud
