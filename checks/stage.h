// What a connection has to reach, stage by stage.
#pragma once

// In the order in which they are reached.
enum class Stage {
    Steam,   // Steam runs
    SteamVR, // SteamVR runs
    Server,  // the streaming server is on the control port
    Headset, // it reports at least one headset, or one is on the cable
    Linked,  // one of them is connected
};

constexpr int stageCount = static_cast<int>(Stage::Linked) + 1;
