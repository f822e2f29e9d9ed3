#include "controller/feedback.h"

#include <QJsonDocument>

QString feedback::name(const QDateTime &now, const QString &serial, const QString &contact)
{
    // In one go: neither text may be taken for a place to fill.
    return QStringLiteral("%1_%2_%3")
        .arg(now.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")), serial, contact);
}

QByteArray feedback::document(const QString &content, const QString &contact, const QJsonObject &pc)
{
    QJsonObject object = pc;
    object.insert(QStringLiteral("content"), content);
    object.insert(QStringLiteral("contact"), contact);
    return QJsonDocument(object).toJson();
}
