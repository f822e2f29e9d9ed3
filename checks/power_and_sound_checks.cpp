#include "checks/table.h"

#include <QCoreApplication>

namespace checks {

namespace {

Found runsOnBattery(const Facts &facts)
{
    if (!facts.power || *facts.power == power::AcLine::Online)
        return std::nullopt;
    return std::vector<Evidence>();
}

Found soundIsNotStereo(const Facts &facts)
{
    if (facts.stereoOutput != false)
        return std::nullopt;
    return std::vector<Evidence>();
}

Check onBattery()
{
    Check check;
    check.id = "on-battery";
    check.surface = Surface::Own;
    check.title = QT_TRANSLATE_NOOP("Checks", "电脑正在使用电池供电");
    check.text = QT_TRANSLATE_NOOP(
        "Checks",
        "使用电池时，处理器和显卡会降低性能，画面可能卡顿。连接电源后，此提示会自动关闭。");
    check.find = runsOnBattery;
    return check;
}

Check noStereoOutput()
{
    Check check;
    check.id = "no-stereo-output";
    check.surface = Surface::Own;
    check.title = QT_TRANSLATE_NOOP("Checks", "声音");
    check.text = QT_TRANSLATE_NOOP(
        "Checks", "当前无音频设备或音频设备是多声道，请切换成双声道模式或者切换双声道音频设备");
    check.find = soundIsNotStereo;
    return check;
}

} // namespace

Table powerAndSoundChecks()
{
    return {onBattery(), noStereoOutput()};
}

} // namespace checks
