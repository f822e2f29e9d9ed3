// The settings object of one headset model: what its members mean, and the
// rules that fill them.
#pragma once

#include "config/link_kind.h"
#include "config/settings_choice.h"

#include <QJsonObject>
#include <QString>

namespace device_settings {

// The model a serial belongs to: 3 for "D3..." and an empty serial, 2 for
// "D2...", 1 for every other one.
int modelOf(const QString &serial);

// Codec name and 10-bit flag as one StreamingChoices::Encoder. An unknown name
// counts as HEVC in 8 bits.
int codecIndex(const QString &codec, bool tenBit);

// The object of a model that was never used.
QJsonObject fresh();

// Fills in what an object that was read from a file lacks. Members that are
// there stay as they are, whatever they hold; so do unknown ones.
void repair(QJsonObject &object);

void storeBitRate(QJsonObject &object, int megabits, LinkKind link);
void storeScale(QJsonObject &object, int percent);

// 0 for 72 Hz, 1 for anything else, and the other way round in hertz.
int fpsIndex(const QJsonObject &object);
double fpsOf(int fpsIndex);

// Stores a choice for the model of `serial` and returns the render scale it
// comes to (1.0 is the headset's own resolution). Its bit rate is that of
// `link` alone.
double storeChoice(QJsonObject &object, const SettingsChoice &choice, LinkKind link,
                   const QString &serial);

} // namespace device_settings
