#include "steamvr/driver_registration.h"

#include "config/config_manager.h"

#include <utility>

DriverRegistration::DriverRegistration(ConfigManager &config, QString driverDir, QString homeDir)
    : config_(config), driverDir_(std::move(driverDir)), homeDir_(std::move(homeDir))
{
}

openvr_paths::Problem DriverRegistration::begin()
{
    const MutexLock lock(mutex_);
    isOwed_ = false;
    return config_.registerDriver(driverDir_, homeDir_).problem;
}

bool DriverRegistration::takeBack()
{
    const MutexLock lock(mutex_);
    isOwed_ = !config_.clearExternalDrivers(homeDir_);
    return !isOwed_;
}

bool DriverRegistration::takeBackAgain()
{
    const MutexLock lock(mutex_);
    if (isOwed_)
        isOwed_ = !config_.clearExternalDrivers(homeDir_, openvr_paths::Attempt::Again);
    return !isOwed_;
}
