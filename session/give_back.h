// How a change is undone, apart from the record of it.
#pragma once

#include "session/outside_change.h"

#include <QString>

// Any thread.
namespace give_back {

// Whether there is a way back: what was set aside stays aside when its name has been
// taken since, forwards only come back with the tool that made them, and a document
// whose folder is gone does not come back.
bool isPossible(const OutsideChange &change);

// Whether what was changed is still changed, as far as the disk tells.
bool isInForce(const OutsideChange &change, const QString &ownDriver);

// A document that is as we left it comes back byte for byte. In an OpenVR list that
// somebody else has written since, only the drivers that are missing are added;
// settings that the server has written since are kept beside ("....replaced").
// False when it could not be done; then everything is as it was.
bool restore(const OutsideChange &change, const QString &ownDriver);

// The OpenVR list `now` with the drivers that `before` registered, and without
// `ownDriver`. Null when it is no JSON.
QByteArray withDrivers(const QByteArray &now, const QByteArray &before, const QString &ownDriver);

} // namespace give_back
