// JSON that stands in the tests themselves.
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

// Ends the program when `json` is none: then the test is wrong.
inline QJsonObject jsonObject(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(json, &error).object();
    if (error.error != QJsonParseError::NoError)
        qFatal("test data is no JSON: %s", json.constData());
    return object;
}
