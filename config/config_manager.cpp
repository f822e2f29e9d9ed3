#include "config/config_manager.h"

#include "base/file_io.h"
#include "config/device_settings.h"
#include "config/hardware_rules.h"
#include "config/openvr_paths.h"
#include "config/session_file.h"

#include <QDebug>
#include <QFile>
#include <QStandardPaths>

#include <utility>

ConfigManager::ConfigManager(const QString &dataDir, CableProbe hasVirtualCable)
    : dataDir_(dataDir), hasVirtualCable_(std::move(hasVirtualCable))
{
}

ConfigManager &ConfigManager::instance()
{
    static ConfigManager manager(
        QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation),
        [] { return false; });
    return manager;
}

void ConfigManager::setCableProbe(CableProbe hasVirtualCable)
{
    hasVirtualCable_ = std::move(hasVirtualCable);
}

QString ConfigManager::settingsFile() const
{
    return dataDir_ + QLatin1String("/set.json");
}

void ConfigManager::tell(StoredFile file, WriteResult result) const
{
    if (result != WriteResult::Ok && notWritten_)
        notWritten_(file, result);
}

void ConfigManager::load()
{
    finishReplacement(settingsFile());
    const std::optional<QByteArray> text = readPatiently(settingsFile());
    settings_file::Reading read =
        settings_file::read(text.value_or(QByteArray()), std::move(settings_));
    settings_ = std::move(read.settings);
    if (read.isJson)
        return;
    qInfo("setting json parseError");
    // What we could not even read may be whole: only somebody else has it open.
    if (text)
        isInTheWay_ = !setAside(settingsFile(), record_);
    else if (QFile::exists(settingsFile()))
        unread_ = settings_;
}

// False while the file still cannot be read, or is no JSON and cannot be set aside:
// then it must not be written.
bool ConfigManager::makeUpForLoading()
{
    isInTheWay_ =
        isInTheWay_ && QFile::exists(settingsFile()) && !setAside(settingsFile(), record_);
    if (isInTheWay_)
        return false;
    if (!unread_)
        return true;
    finishReplacement(settingsFile());
    const std::optional<QByteArray> text = readPatiently(settingsFile());
    if (!text && QFile::exists(settingsFile()))
        return false;
    if (text) {
        const settings_file::Reading stored = settings_file::read(*text);
        if (!stored.isJson && !setAside(settingsFile(), record_))
            return false;
        settings_ = settings_file::merge(stored, *unread_, settings_);
    }
    unread_.reset();
    return true;
}

QJsonObject ConfigManager::loadDeviceSettings(bool byModel, int model)
{
    const bool first = settings_.d1.isEmpty();
    if (first) {
        load();
        deriveDimensions();
    }
    if (!byModel)
        return settings_.serial.isEmpty() ? settings_.d1 : deviceObject(settings_.serial);
    if (first)
        return modelOrSerialObject(model);
    switch (model) {
    case 1:
        return settings_.d1;
    case 2:
        return settings_.d2;
    default:
        return settings_.d3;
    }
}

QJsonObject &ConfigManager::deviceObject(const QString &serial)
{
    switch (modelOf(serial)) {
    case 3:
        return settings_.d3;
    case 2:
        return settings_.d2;
    default:
        return settings_.d1;
    }
}

QJsonObject &ConfigManager::modelOrSerialObject(int model)
{
    const auto is = [&](int number, QLatin1String prefix) {
        return model == number || settings_.serial.startsWith(prefix);
    };
    if (is(2, QLatin1String("D2")))
        return settings_.d2;
    if (is(1, QLatin1String("D1")))
        return settings_.d1;
    return is(3, QLatin1String("D3")) ? settings_.d3 : settings_.d1;
}

void ConfigManager::saveDeviceSettings(const QString &serial)
{
    if (!serial.isEmpty())
        settings_.serial = serial;
    // What cannot be saved holds for this run all the same.
    tell(StoredFile::Settings, makeUpForLoading()
                                   ? replaceFile(settingsFile(), settings_file::write(settings_))
                                   : WriteResult::OpenFailed);
    dimensionsKnown_ = false;
}

bool ConfigManager::setDeviceSn(const QString &serial)
{
    if (serial.isEmpty())
        return false;
    const bool otherModel = modelOf(serial) != modelOf(settings_.serial);
    settings_.serial = serial;
    if (!otherModel)
        return true;
    // 10-bit is left out on purpose: a stored HEVC 10-bit choice comes back as
    // plain HEVC.
    const QJsonObject object = deviceObject(serial);
    SettingsChoice choice;
    choice.definitionIndex = object.value(QLatin1String("definitionIndex")).toInt();
    choice.fpsIndex = device_settings::fpsIndex(object);
    choice.encodeIndex = codecIndex(object.value(QLatin1String("codec")).toString(), false);
    choice.audio = object.value(QLatin1String("audio")).toBool();
    choice.tenBit = object.value(QLatin1String("10bitenc")).toBool();
    choice.fullRange = object.value(QLatin1String("fullrange")).toBool();
    choice.hdr = object.value(QLatin1String("hdr")).toBool();
    qInfo().noquote().nospace() << "setDeviceSn: " << serial
                                << "; codectype: " << choice.encodeIndex;
    applyStreamingSettings(choice, settings_.link);
    return true;
}

QJsonValue ConfigManager::current(QLatin1String key)
{
    return deviceObject(settings_.serial).value(key);
}

int ConfigManager::logged(const char *what, int value) const
{
    qInfo().noquote().nospace() << what << ": " << value << "; sn: " << settings_.serial;
    return value;
}

int ConfigManager::definitionIndex()
{
    return logged("definitionIndex", current(QLatin1String("definitionIndex")).toInt());
}

int ConfigManager::fpsIndex()
{
    return logged("fpsIndex", device_settings::fpsIndex(deviceObject(settings_.serial)));
}

int ConfigManager::encodeIndex()
{
    return logged("encodeIndex", codecIndex(current(QLatin1String("codec")).toString(), tenBit()));
}

bool ConfigManager::audio()
{
    return current(QLatin1String("audio")).toBool();
}

bool ConfigManager::fullRange()
{
    return current(QLatin1String("fullrange")).toBool();
}

bool ConfigManager::tenBit()
{
    return current(QLatin1String("10bitenc")).toBool();
}

bool ConfigManager::hdr()
{
    return current(QLatin1String("hdr")).toBool();
}

void ConfigManager::deriveDimensions()
{
    if (dimensionsKnown_)
        return;
    const bool model3 = modelOf(settings_.serial) == 3;
    width_ = model3 ? 2880 : 1600;
    height_ = model3 ? 2656 : 1600;
    dimensionsKnown_ = true;
}

int ConfigManager::width()
{
    deriveDimensions();
    return logged("width", width_);
}

int ConfigManager::height()
{
    deriveDimensions();
    return logged("height", height_);
}

void ConfigManager::setBitRate(int bitRate, bool wired, int model)
{
    device_settings::storeBitRate(modelOrSerialObject(model), bitRate, linkKind(wired));
}

void ConfigManager::setCustomize(int scale, int bitRate, bool wired, int model)
{
    QJsonObject &object = modelOrSerialObject(model);
    device_settings::storeScale(object, scale);
    device_settings::storeBitRate(object, bitRate, linkKind(wired));
}

int ConfigManager::modelOf(const QString &serial)
{
    return device_settings::modelOf(serial);
}

int ConfigManager::codecIndex(const QString &codec, bool tenBit)
{
    return device_settings::codecIndex(codec, tenBit);
}

void ConfigManager::applyStreamingSettings(int definitionIndex, int fpsIndex, int encodeIndex,
                                           bool audio, bool wired, bool tenBit, bool fullRange,
                                           bool hdr)
{
    SettingsChoice choice;
    choice.definitionIndex = definitionIndex;
    choice.fpsIndex = fpsIndex;
    choice.encodeIndex = encodeIndex;
    choice.audio = audio;
    choice.tenBit = tenBit;
    choice.fullRange = fullRange;
    choice.hdr = hdr;
    applyStreamingSettings(choice, linkKind(wired));
}

void ConfigManager::applyStreamingSettings(const SettingsChoice &choice, LinkKind link)
{
    qInfo().noquote() << QStringLiteral("definition: %1 fps: %2  encode: %3 audio: %4 wired: %5")
                             .arg(choice.definitionIndex)
                             .arg(choice.fpsIndex)
                             .arg(choice.encodeIndex)
                             .arg(int(choice.audio))
                             .arg(int(isWired(link)));
    const double scale = device_settings::storeChoice(deviceObject(settings_.serial), choice, link,
                                                      settings_.serial);
    // QString and not const char *: the blank at the end is part of the line.
    qInfo().noquote().nospace() << QStringLiteral("scale: %1 fps %2 ")
                                       .arg(QString::number(scale, 'g',
                                                            QLocale::FloatingPointShortest))
                                       .arg(choice.fpsIndex);
    // Stored as one of the two, whatever the file held.
    settings_.link = linkKind(isWired(link));
    saveDeviceSettings(QString());
    tell(StoredFile::ServerSettings,
         session_file::editStreaming(device_settings::fpsOf(choice.fpsIndex), choice.audio,
                                     hasVirtualCable_, record_));
}

void ConfigManager::writeSessionSerial()
{
    tell(StoredFile::ServerSettings, session_file::editSerial(settings_.serial, record_));
}

bool ConfigManager::hasExternalDrivers(const QString &homeDir) const
{
    return openvr_paths::hasDrivers(homeDir);
}

bool ConfigManager::setExternalDrivers(const QString &driverPath, const QString &homeDir,
                                       QString *runtimePath) const
{
    const openvr_paths::Registration registration = registerDriver(driverPath, homeDir);
    if (registration.runtimePath)
        *runtimePath = *registration.runtimePath;
    return registration.problem == openvr_paths::Problem::None;
}

openvr_paths::Registration ConfigManager::registerDriver(const QString &driverPath,
                                                         const QString &homeDir) const
{
    return openvr_paths::registerDriver(homeDir, driverPath, record_);
}

bool ConfigManager::clearExternalDrivers(const QString &homeDir,
                                         openvr_paths::Attempt attempt) const
{
    return openvr_paths::clearDrivers(homeDir, attempt, record_);
}

int ConfigManager::hardwareScore(const QString &cpuName, const QString &gpuName)
{
    const std::optional<QJsonObject> rules = hardware_rules::read();
    if (!rules)
        return 0;
    const hardware_rules::Score score = hardware_rules::score(*rules, cpuName, gpuName);
    qInfo("hardware: %d %d", score.processor, score.graphics);
    return score.processor + score.graphics;
}

bool ConfigManager::isAv1Capable(const QString &gpuName) const
{
    const std::optional<QJsonObject> rules = hardware_rules::read();
    return rules && settings_.serial.startsWith(QLatin1String("D3")) &&
           hardware_rules::namesAv1Card(*rules, gpuName);
}

bool ConfigManager::isNvidia(const QString &gpuName)
{
    return gpuName.contains(QLatin1String("nvidia"), Qt::CaseInsensitive);
}
