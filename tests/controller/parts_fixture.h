// The controller's parts on a simulated PC, without the controller.
#pragma once

#include "base/mutex.h"
#include "controller/connection_flow.h"
#include "controller/streaming_settings.h"
#include "controller/usb_headset.h"
#include "controller/vr_list_model.h"
#include "tests/controller/controller_fixture.h"

// What stands on these is put together by the tests, which write down in `said`
// what they hear.
struct PartsFixture : PcFixture
{
    explicit PartsFixture(const QString &folder, const SteamOptions &options = steamRunning())
        : PcFixture(folder, options)
    {
        config.loadDeviceSettings(false, 0);
        flow.setLink(&server);
    }

    QStringList said;
    Mutex lock;
    StreamingSettings settings{clock, config, PcFixture::steam, lock};
    VRListModel model;
    ConnectionFlow flow{clock, config, system, model};
    // Says "adb" whenever it turns to adb.
    UsbHeadset usb{[this]() -> AdbManger & {
        said << "adb";
        return adb;
    }};
};
