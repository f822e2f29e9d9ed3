// How the streaming server is to encode picture and sound.
#pragma once

// What the user chose on the settings page, for one headset model. The numbers
// are those of StreamingChoices; others may come from a file. A value type.
struct SettingsChoice
{
    int definitionIndex = 0; // StreamingChoices::Definition
    int fpsIndex = 0;        // StreamingChoices::FrameRate
    int encodeIndex = 0;     // StreamingChoices::Encoder
    bool audio = false;
    bool tenBit = false; // heeded only when `encodeIndex` is above its range
    bool fullRange = false;
    bool hdr = false;
};
