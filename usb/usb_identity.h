// Which of the system's device messages concern a headset.
#pragma once

#include <QString>

namespace usb_identity {

// Whether the path of a device interface, as the system writes it, belongs to
// a headset. What follows its last "#" (the class) does not count, nor does
// the case of its letters. Any thread.
bool isHeadset(const QString &interfacePath);

} // namespace usb_identity
