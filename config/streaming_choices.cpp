#include "config/streaming_choices.h"

namespace {

constexpr StreamingChoices::Preset presets[] = {
    {20, 0.9, 0.8},  // Smooth
    {50, 1.0, 0.9},  // Standard
    {100, 1.1, 1.0}, // High
};

} // namespace

const StreamingChoices::Preset *StreamingChoices::preset(int definition)
{
    return definition >= Smooth && definition <= High ? &presets[definition] : nullptr;
}

int StreamingChoices::bitRate(int definition)
{
    const Preset *const chosen = preset(definition);
    return chosen ? chosen->bitRate : 0;
}

int StreamingChoices::hertz(int frameRate)
{
    return frameRate == Hz90 ? 90 : 72;
}

int StreamingChoices::lastEncoder(bool av1Available, bool nvidiaAvailable)
{
    if (av1Available)
        return Av1;
    return nvidiaAvailable ? HevcTenBit : Hevc;
}
