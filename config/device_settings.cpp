#include "config/device_settings.h"

namespace device_settings {

namespace {

const QLatin1String kFps("fps");
const QLatin1String kBitRate("bitRate");
const QLatin1String kBitRateWired("bitRate_wired");
const QLatin1String kScale("scale");
const QLatin1String kAudio("audio");
const QLatin1String kCustomize("customize");
const QLatin1String kCodec("codec");
const QLatin1String kDefinitionIndex("definitionIndex");
const QLatin1String kFullRange("fullrange");
const QLatin1String kTenBit("10bitenc");
const QLatin1String kHdr("hdr");

const QLatin1String kH264("H264");
const QLatin1String kHevc("HEVC");
const QLatin1String kAv1("AV01");

constexpr int kStandard = 1;
constexpr int kCustom = 3;

struct Definition
{
    QLatin1String bitRate;
    double scale;
    double scaleD3H264; // H.264 cannot carry D3's full resolution
};

const Definition kDefinitions[] = {
    {QLatin1String("20"), 0.9, 0.8},
    {QLatin1String("50"), 1.0, 0.9},
    {QLatin1String("100"), 1.1, 1.0},
};
constexpr int kDefinitionCount = 3;

const Definition *definition(int index)
{
    return index >= 0 && index < kDefinitionCount ? &kDefinitions[index] : nullptr;
}

void insertMissing(QJsonObject &object, QLatin1String key, const QJsonValue &value)
{
    if (!object.contains(key))
        object.insert(key, value);
}

QLatin1String bitRateKey(bool wired)
{
    return wired ? kBitRateWired : kBitRate;
}

struct Encoder
{
    QLatin1String codec;
    bool tenBit;
};

Encoder encoderOf(int index, bool tenBit)
{
    switch (index) {
    case 0:
        return {kH264, false};
    case 1:
        return {kHevc, false};
    case 2:
        return {kHevc, true};
    case 3:
        return {kAv1, true};
    default:
        return {kHevc, index > 3 && tenBit};
    }
}

} // namespace

int modelOf(const QString &serial)
{
    if (serial.isEmpty() || serial.startsWith(QLatin1String("D3")))
        return 3;
    return serial.startsWith(QLatin1String("D2")) ? 2 : 1;
}

int codecIndex(const QString &codec, bool tenBit)
{
    if (codec == kH264)
        return 0;
    if (codec == kAv1)
        return 3;
    return codec == kHevc && tenBit ? 2 : 1;
}

QJsonObject fresh()
{
    static const QJsonObject object{
        {kFps, QStringLiteral("90")},
        {kBitRate, QStringLiteral("50")},
        {kBitRateWired, QStringLiteral("50")},
        {kScale, QStringLiteral("100")},
        {kAudio, false},
        {kCustomize, false},
        {kCodec, kHevc},
        {kDefinitionIndex, kStandard},
        {kFullRange, false},
        {kTenBit, false},
        {kHdr, false},
    };
    return object;
}

void repair(QJsonObject &object)
{
    insertMissing(object, kFps, QStringLiteral("90"));
    insertMissing(object, kCustomize, false);
    const bool custom = object.value(kCustomize).toBool();
    insertMissing(object, kDefinitionIndex, custom ? kCustom : kStandard);
    insertMissing(object, kCodec, kHevc);
    insertMissing(object, kAudio, false);
    // A number here and a text in a fresh object: readers of older files know
    // it so.
    insertMissing(object, kScale, 100);
    const Definition *const chosen = definition(object.value(kDefinitionIndex).toInt());
    const QString bitRate = chosen ? QString(chosen->bitRate) : QStringLiteral("50");
    insertMissing(object, kBitRate, bitRate);
    insertMissing(object, kBitRateWired, bitRate);
    insertMissing(object, kFullRange, false);
    insertMissing(object, kTenBit, false);
    insertMissing(object, kHdr, false);
}

void storeBitRate(QJsonObject &object, int megabits, bool wired)
{
    object.insert(bitRateKey(wired), QString::number(megabits));
}

void storeScale(QJsonObject &object, int percent)
{
    object.insert(kScale, QString::number(percent));
}

int fpsIndex(const QJsonObject &object)
{
    return object.value(kFps).toString() == QLatin1String("72") ? 0 : 1;
}

double fpsOf(int fpsIndex)
{
    return fpsIndex == 1 ? 90.0 : 72.0;
}

double storeChoice(QJsonObject &object, const Choice &choice, const QString &serial)
{
    double scale = 1.0;
    if (const Definition *const chosen = definition(choice.definitionIndex)) {
        const bool d3H264 = choice.encodeIndex == 0 && serial.startsWith(QLatin1String("D3"));
        scale = d3H264 ? chosen->scaleD3H264 : chosen->scale;
        object.insert(bitRateKey(choice.wired), chosen->bitRate);
    } else if (choice.definitionIndex == kCustom) {
        // Only a text counts: the number that repair() fills in reads as 0.
        scale = object.value(kScale).toString().toInt() / 100.0;
    }
    object.insert(kCustomize, choice.definitionIndex == kCustom);

    const Encoder encoder = encoderOf(choice.encodeIndex, choice.tenBit);
    object.insert(kDefinitionIndex, choice.definitionIndex);
    object.insert(kCodec, encoder.codec);
    object.insert(kAudio, choice.audio);
    object.insert(kFps, QString::number(fpsOf(choice.fpsIndex)));
    object.insert(kScale, QString::number(scale * 100));
    object.insert(kFullRange, choice.fullRange);
    object.insert(kTenBit, encoder.tenBit);
    object.insert(kHdr, choice.hdr);
    return scale;
}

} // namespace device_settings
