#include "config/device_settings.h"

#include "config/streaming_choices.h"

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

void insertMissing(QJsonObject &object, QLatin1String key, const QJsonValue &value)
{
    if (!object.contains(key))
        object.insert(key, value);
}

QString standardBitRate()
{
    return QString::number(StreamingChoices::bitRate(StreamingChoices::Standard));
}

QLatin1String bitRateKey(LinkKind link)
{
    return isWired(link) ? kBitRateWired : kBitRate;
}

struct Encoder
{
    QLatin1String codec;
    bool tenBit;
};

Encoder encoderOf(int index, bool tenBit)
{
    switch (index) {
    case StreamingChoices::H264:
        return {kH264, false};
    case StreamingChoices::Hevc:
        return {kHevc, false};
    case StreamingChoices::HevcTenBit:
        return {kHevc, true};
    case StreamingChoices::Av1:
        return {kAv1, true};
    default:
        return {kHevc, index > StreamingChoices::Av1 && tenBit};
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
        return StreamingChoices::H264;
    if (codec == kAv1)
        return StreamingChoices::Av1;
    return codec == kHevc && tenBit ? StreamingChoices::HevcTenBit : StreamingChoices::Hevc;
}

QJsonObject fresh()
{
    static const QJsonObject object{
        {kFps, QStringLiteral("90")},
        {kBitRate, standardBitRate()},
        {kBitRateWired, standardBitRate()},
        {kScale, QStringLiteral("100")},
        {kAudio, false},
        {kCustomize, false},
        {kCodec, kHevc},
        {kDefinitionIndex, StreamingChoices::Standard},
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
    insertMissing(object, kDefinitionIndex,
                  custom ? StreamingChoices::Custom : StreamingChoices::Standard);
    insertMissing(object, kCodec, kHevc);
    insertMissing(object, kAudio, false);
    // A number here and a text in a fresh object: readers of older files know
    // it so.
    insertMissing(object, kScale, 100);
    const int ofDefinition = StreamingChoices::bitRate(object.value(kDefinitionIndex).toInt());
    const QString bitRate = ofDefinition > 0 ? QString::number(ofDefinition) : standardBitRate();
    insertMissing(object, kBitRate, bitRate);
    insertMissing(object, kBitRateWired, bitRate);
    insertMissing(object, kFullRange, false);
    insertMissing(object, kTenBit, false);
    insertMissing(object, kHdr, false);
}

void storeBitRate(QJsonObject &object, int megabits, LinkKind link)
{
    object.insert(bitRateKey(link), QString::number(megabits));
}

void storeScale(QJsonObject &object, int percent)
{
    object.insert(kScale, QString::number(percent));
}

int fpsIndex(const QJsonObject &object)
{
    return object.value(kFps).toString() == QLatin1String("72") ? StreamingChoices::Hz72
                                                                : StreamingChoices::Hz90;
}

double fpsOf(int fpsIndex)
{
    return StreamingChoices::hertz(fpsIndex);
}

double storeChoice(QJsonObject &object, const SettingsChoice &choice, LinkKind link,
                   const QString &serial)
{
    double scale = 1.0;
    const bool custom = choice.definitionIndex == StreamingChoices::Custom;
    if (const auto *const chosen = StreamingChoices::preset(choice.definitionIndex)) {
        const bool d3H264 =
            choice.encodeIndex == StreamingChoices::H264 && serial.startsWith(QLatin1String("D3"));
        scale = d3H264 ? chosen->scaleD3H264 : chosen->scale;
        storeBitRate(object, chosen->bitRate, link);
    } else if (custom) {
        // Only a text counts: the number that repair() fills in reads as 0.
        scale = object.value(kScale).toString().toInt() / 100.0;
    }
    object.insert(kCustomize, custom);

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
