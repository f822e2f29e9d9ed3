// Where the vendor cloud is.
#pragma once

#include <QString>

namespace cloud {

// The host of the vendor cloud, with a port where it is not the usual one:
// "cloud.example.com" or "127.0.0.1:18443". It was chosen when the program was
// built (KOLM_CLOUD_HOST); on a simulated PC the environment variable
// SIMPC_CLOUD_HOST leads elsewhere. Any thread.
QString host();

} // namespace cloud
