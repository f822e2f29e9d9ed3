// "session.json", the settings file of the streaming server: the two edits
// that we make to it. Everything else in it stays as the server left it, and
// no object is put where the server has none.
#pragma once

#include "base/file_io.h"
#include "config/outside_record.h"

#include <QJsonObject>
#include <QString>

#include <functional>
#include <optional>

namespace session_file {

// Where the streaming server keeps it: its and our working directory.
QString path();

// --- edits of the tree -------------------------------------------------------

// `root` with the frame rate (hertz) and the microphone switch set.
// `hasVirtualCable` is asked only when the answer matters.
[[nodiscard]] QJsonObject withStreaming(QJsonObject root, double fps, bool audio,
                                        const std::function<bool()> &hasVirtualCable);

// `root` without its client connections or, when there are none, with the
// headset's serial. Nothing when there is nothing to write.
[[nodiscard]] std::optional<QJsonObject> withSerial(QJsonObject root, const QString &serial);

// --- edits of the file -------------------------------------------------------
// A file that is no JSON is set aside: the server then writes a fresh one. One
// that cannot be opened (tried for a moment) or written is left alone, which is
// what they return; Ok where there is nothing to write.

WriteResult editStreaming(double fps, bool audio, const std::function<bool()> &hasVirtualCable,
                          const OutsideRecord &record = {});
WriteResult editSerial(const QString &serial, const OutsideRecord &record = {});

} // namespace session_file
