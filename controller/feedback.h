// What the user has to say, as it is sent to the vendor cloud.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QString>

namespace feedback {

// What the cloud calls it: when, with which headset and by whom it was written.
QString name(const QDateTime &now, const QString &serial, const QString &contact);

// The file's content: the words, the contact, and `pc`, the readings of this
// PC, which cannot replace the two.
QByteArray document(const QString &content, const QString &contact, const QJsonObject &pc);

} // namespace feedback
