// The settings that this program shares with the streaming server, with OpenVR
// and with its own next run.
#pragma once

#include "config/link_kind.h"
#include "config/not_written.h"
#include "config/openvr_paths.h"
#include "config/outside_record.h"
#include "config/settings_choice.h"
#include "config/settings_file.h"

#include <QJsonObject>
#include <QString>

#include <functional>
#include <optional>
#include <utility>

// Per-model streaming settings ("set.json"), the streaming server's settings
// file ("./session.json") and OpenVR's per-user paths file.
//
// GUI thread only, except the three operations on the OpenVR paths file, which
// use no state of the object.
class ConfigManager
{
public:
    // Asked when settings with audio are written: is the virtual audio cable
    // there?
    using CableProbe = std::function<bool()>;

    // `dataDir` is the folder of "set.json". It must exist for anything to be
    // saved.
    ConfigManager(const QString &dataDir, CableProbe hasVirtualCable);

    // The product's one. It knows of no cable until setCableProbe() has said
    // whom to ask.
    static ConfigManager &instance();
    void setCableProbe(CableProbe hasVirtualCable);
    // From now on told before the documents of others are changed, and before a file
    // that is no JSON is set aside. Before anything else, on one thread.
    void setOutsideRecord(OutsideRecord record) { record_ = std::move(record); }
    // From now on told of "set.json" and "session.json" when they cannot be
    // written. Empty: nobody.
    void setNotWritten(NotWritten notWritten) { notWritten_ = std::move(notWritten); }

    // --- per-device settings store -------------------------------------------

    // A copy of one per-model object; loads "set.json" first if that has not
    // been done. By model number (1, 2, else 3) or by the stored serial.
    QJsonObject loadDeviceSettings(bool byModel, int model);
    // The per-model object for a serial: empty or "D3..." gives D3, "D2..."
    // D2, anything else D1.
    QJsonObject &deviceObject(const QString &serial);
    // Writes "set.json". A non-empty serial becomes the stored one first. What
    // somebody held when it was to be loaded is not written over by defaults:
    // of it stays what this run has not changed.
    void saveDeviceSettings(const QString &serial);
    // Makes a newly connected headset current; its model's settings are
    // applied when the model changed. False for an empty serial.
    bool setDeviceSn(const QString &serial);

    // Reads of the current serial's object.
    int definitionIndex();
    int fpsIndex();
    int encodeIndex();
    bool audio();
    bool fullRange();
    bool tenBit();
    bool hdr();

    // Eye resolution of the current headset's model, in pixels.
    int width();
    int height();

    // How the last headset was reached; as number and as kind.
    int wiredOrWireless() const { return static_cast<int>(settings_.link); }
    void setWiredOrWireless(int mode) { settings_.link = static_cast<LinkKind>(mode); }
    LinkKind link() const { return settings_.link; }
    void setLink(LinkKind link) { settings_.link = link; }
    QString serial() const { return settings_.serial; }

    // Store into a model's object as decimal texts: D2 if `model` is 2 or the
    // stored serial begins so, else D1 by the same rule, else D3, else D1.
    // Neither saves.
    void setBitRate(int bitRate, bool wired, int model);
    void setCustomize(int scale, int bitRate, bool wired, int model);

    // 3 for "D3..." and empty, 2 for "D2...", else 1.
    static int modelOf(const QString &serial);
    static int codecIndex(const QString &codec, bool tenBit);

    // --- streaming server's session file -------------------------------------

    // Stores a choice for the current serial and for this link, saves, and
    // writes the streaming server's file; the other one takes it in pieces.
    void applyStreamingSettings(const SettingsChoice &choice, LinkKind link);
    void applyStreamingSettings(int definitionIndex, int fpsIndex, int encodeIndex, bool audio,
                                bool wired, bool tenBit, bool fullRange, bool hdr);
    void writeSessionSerial();

    // --- OpenVR paths file; any thread ---------------------------------------

    // Whether any driver is registered.
    bool hasExternalDrivers(const QString &homeDir) const;
    // Makes the folder `driverPath` the only registered driver; false, with a
    // line in the log, when it could not. `runtimePath` becomes the first
    // SteamVR folder that the file names, and stays when it names none.
    bool setExternalDrivers(const QString &driverPath, const QString &homeDir,
                            QString *runtimePath) const;
    // The same, which says what stood in the way.
    openvr_paths::Registration registerDriver(const QString &driverPath,
                                              const QString &homeDir) const;
    // Registers no driver any more. Failures are logged at the first attempt;
    // after false another one may do it.
    bool clearExternalDrivers(const QString &homeDir,
                              openvr_paths::Attempt attempt = openvr_paths::Attempt::First) const;

    // --- hardware rules -------------------------------------------------------

    // How well this hardware streams, by "./compare.json": 8 and more is
    // enough. 0 without a readable file.
    static int hardwareScore(const QString &cpuName, const QString &gpuName);
    // Whether AV1 may be offered: the file lists the card as good and new
    // enough, and the stored serial is one of a model-3 headset.
    bool isAv1Capable(const QString &gpuName) const;
    // Whether "nvidia" occurs in the name, in any letter case.
    static bool isNvidia(const QString &gpuName);

private:
    QString settingsFile() const;
    void load();
    void tell(StoredFile file, WriteResult result) const;
    bool makeUpForLoading();
    void deriveDimensions();
    QJsonObject &modelOrSerialObject(int model);
    QJsonValue current(QLatin1String key);
    int logged(const char *what, int value) const;

    QString dataDir_;
    CableProbe hasVirtualCable_;
    NotWritten notWritten_;
    OutsideRecord record_;
    // Not loaded while `d1` is empty.
    StoredSettings settings_;
    // What `settings_` were when the file could not be read; nothing when it
    // could.
    std::optional<StoredSettings> unread_;
    bool isInTheWay_ = false; // a file that is no JSON, which nobody let us rename
    int width_ = 2880;
    int height_ = 2656;
    bool dimensionsKnown_ = false;
};
