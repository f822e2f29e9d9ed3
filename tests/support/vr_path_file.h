// The file in a home folder in which OpenVR says where it and its drivers are.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace vr_path_file {

inline QString name(const QString &home)
{
    return home + QStringLiteral("/AppData/Local/openvr/openvrpaths.vrpath");
}

// Makes its folder as well. Ends the program when it cannot be written.
inline void write(const QString &home, const QByteArray &json)
{
    QDir().mkpath(home + QStringLiteral("/AppData/Local/openvr"));
    QFile file(name(home));
    if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size())
        qFatal("the OpenVR paths file cannot be written");
}

// SteamVR is installed, and no driver is registered.
inline void writeWithoutDrivers(const QString &home)
{
    write(home, R"({"runtime":["C:\\SteamVR"],"external_drivers":null})");
}

// These drivers are registered.
inline void writeDrivers(const QString &home, const QStringList &drivers)
{
    const QJsonObject paths{{"external_drivers", QJsonArray::fromStringList(drivers)}};
    write(home, QJsonDocument(paths).toJson());
}

// Empty when there is none.
inline QJsonObject read(const QString &home)
{
    QFile file(name(home));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}

} // namespace vr_path_file
