// Our driver in OpenVR's list, and what is still to be taken back of it.
#pragma once

#include "base/mutex.h"
#include "config/openvr_paths.h"

#include <QString>

class ConfigManager;

// The list belongs to others, who may hold it just when the registration has to go:
// then that is owed until it is done. Any thread.
class DriverRegistration
{
public:
    // Registers the driver in `driverDir`, in the list of the user whose home is
    // `homeDir`. `config` outlives this object.
    DriverRegistration(ConfigManager &config, QString driverDir, QString homeDir);

    // What was owed before is no more: this one stays until its own time comes.
    // Says what keeps the driver from being registered.
    openvr_paths::Problem begin();
    // Says in the log what came of it. False when it is owed.
    bool takeBack();
    // Tries again, without a word, if it is owed; false when it still is.
    bool takeBackAgain();

private:
    ConfigManager &config_;
    const QString driverDir_;
    const QString homeDir_;
    Mutex mutex_;
    bool isOwed_ GUARDED_BY(mutex_) = false;
};
