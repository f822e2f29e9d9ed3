#include "sysinfo/graphics_rules.h"

namespace {

constexpr quint32 nvidia = 0x10de;
constexpr quint32 amd = 0x1002;
constexpr quint32 microsoft = 0x1414;
constexpr quint32 basicRenderDriver = 0x8c;

struct LevelName
{
    quint32 level;
    const char *name;
};

constexpr LevelName levelNames[] = {
    {0x1000, "DirectX 1.0 Core"}, {0x9100, "DirectX 9.1"},  {0x9200, "DirectX 9.2"},
    {0x9300, "DirectX 9.3"},      {0xa000, "DirectX 10.0"}, {0xa100, "DirectX 10.1"},
    {0xb000, "DirectX 11.0"},     {0xb100, "DirectX 11.1"}, {0xc000, "DirectX 12.0"},
    {0xc100, "DirectX 12.1"},
};

QString levelText(quint32 level)
{
    for (const LevelName &known : levelNames) {
        if (known.level == level)
            return QString::fromLatin1(known.name);
    }
    return QStringLiteral("Unknown DirectX version");
}

} // namespace

graphics_rules::Graphics
graphics_rules::classify(const std::vector<graphics_adapters::Adapter> &adapters)
{
    Graphics graphics;
    for (const graphics_adapters::Adapter &adapter : adapters) {
        if (adapter.vendorId == microsoft && adapter.deviceId == basicRenderDriver)
            continue;
        // A lone AMD adapter may be part of the processor: it is taken for that
        // until it turns out to be the second one.
        const bool discrete = adapter.vendorId == nvidia ||
                              (adapter.vendorId == amd && !graphics.integrated.isEmpty() &&
                               graphics.integrated != adapter.name);
        if (discrete) {
            graphics.discrete = adapter.name;
            graphics.vram = videoMemoryText(adapter.dedicatedMemory);
        } else {
            graphics.integrated = adapter.name;
        }
    }
    return graphics;
}

QString graphics_rules::videoMemoryText(quint64 bytes)
{
    // Cards keep a little of their memory to themselves: the next full unit is
    // what it says on the box.
    const quint64 mebibytes = (bytes >> 20) + 1;
    if (mebibytes >= 1024)
        return QString::number((bytes >> 30) + 1) + QStringLiteral("GB");
    return QString::number(mebibytes) + QLatin1Char('M');
}

QString graphics_rules::directXText(
    const std::function<feature_level::Answer(const std::vector<quint32> &levels)> &probe)
{
    std::vector<quint32> levels = {0xb000, 0xa100, 0xa000, 0x9300, 0x9200, 0x9100};
    const feature_level::Answer answer = probe(levels);
    if (answer.result == feature_level::invalidArgument) {
        levels.erase(levels.begin());
        probe(levels);
        return QStringLiteral("Current operation system DirectX is not supported!");
    }
    return levelText(answer.level);
}
