#include "peers/adb_sim/state.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

State::State() : folder_(qEnvironmentVariable("ADB_SIM_FOLDER")) {}

bool State::isThere() const
{
    if (folder_.isEmpty() || !QDir(folder_).exists())
        return false;
    QFile owner(folder_ + QStringLiteral("/owner"));
    return !owner.open(QIODevice::ReadOnly) || QFile::exists(QString::fromUtf8(owner.readAll()));
}

std::vector<Device> State::devices() const
{
    std::vector<Device> devices;
    QFile file(folder_ + QStringLiteral("/devices"));
    if (!file.open(QIODevice::ReadOnly))
        return devices;
    for (const QString &line : QString::fromUtf8(file.readAll()).split('\n')) {
        if (!line.isEmpty())
            devices.push_back({line.section('\t', 0, 0), line.section('\t', 1)});
    }
    return devices;
}

std::optional<QByteArray> State::recorded(const QStringList &arguments) const
{
    QFile file(folder_ + QStringLiteral("/answers/") + arguments.join('_'));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

bool State::hangs() const
{
    return QFile::exists(folder_ + QStringLiteral("/hang"));
}

void State::record(const QStringList &arguments) const
{
    const QJsonObject call = {
        {QStringLiteral("program"), QCoreApplication::applicationFilePath()},
        {QStringLiteral("folder"), QDir::currentPath()},
        {QStringLiteral("arguments"), QJsonArray::fromStringList(arguments)},
    };
    QFile file(folder_ + QStringLiteral("/calls"));
    if (file.open(QIODevice::WriteOnly | QIODevice::Append))
        file.write(QJsonDocument(call).toJson(QJsonDocument::Compact) + '\n');
}
