#include "config/openvr_paths.h"

#include "base/file_io.h"

#include <QDebug>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>

namespace openvr_paths {

namespace {

const QLatin1String kDrivers("external_drivers");

// The document in the file at `path`, or nothing and a line in the log. `held`
// becomes true when there is a file that cannot be read.
std::optional<JsonDocument> read(const QString &path, bool *held = nullptr)
{
    finishReplacement(path);
    if (!QFile::exists(path)) {
        qInfo().noquote().nospace() << "Config file does not exist:" << path;
        return std::nullopt;
    }
    const std::optional<QByteArray> text = readContent(path);
    if (!text) {
        if (held)
            *held = true;
        qWarning().noquote().nospace() << "Failed to open file for reading:" << path;
        return std::nullopt;
    }
    JsonDocument json = parseJson(*text);
    if (!json.ok()) {
        qInfo().noquote().nospace() << "vrpath parseError:" << json.error.errorString();
        return std::nullopt;
    }
    return json;
}

bool write(const QString &path, const JsonDocument &json)
{
    switch (replaceForeignFile(path, toIndented(json))) {
    case WriteResult::OpenFailed:
        qWarning().noquote().nospace() << "Failed to open file for writing:" << path;
        return false;
    case WriteResult::WriteFailed:
        qWarning().noquote().nospace() << "Failed to write to file:" << path;
        return false;
    case WriteResult::Ok:
        break;
    }
    return true;
}

} // namespace

QString path(const QString &homeDir)
{
    return homeDir + QLatin1String("/AppData/Local/openvr/openvrpaths.vrpath");
}

bool hasDrivers(const JsonDocument &json)
{
    return !json.document.object().value(kDrivers).toArray().isEmpty();
}

std::optional<QString> registerDriver(JsonDocument &json, const QString &driverPath)
{
    QJsonObject root = json.document.object();
    // The editable look-up leaves a null where there is no runtime.
    const QJsonArray runtimes = root[QLatin1String("runtime")].toArray();
    root.insert(kDrivers, QJsonArray{driverPath});
    json.document.setObject(root);
    if (runtimes.isEmpty())
        return std::nullopt;
    return json.text(runtimes.first());
}

bool clearDrivers(JsonDocument &json)
{
    QJsonObject root = json.document.object();
    if (!root.contains(kDrivers))
        return false;
    root.insert(kDrivers, QJsonValue::Null);
    json.document.setObject(root);
    return true;
}

bool hasDrivers(const QString &homeDir)
{
    finishReplacement(path(homeDir));
    const std::optional<QByteArray> text = readContent(path(homeDir));
    return text && hasDrivers(parseJson(*text));
}

Registration registerDriver(const QString &homeDir, const QString &driverPath)
{
    Registration registration;
    const QString file = path(homeDir);
    std::optional<JsonDocument> json = read(file);
    if (!json)
        return registration;
    if (!json->document.isObject()) {
        // Nobody knows whose it is and what it means.
        qWarning().noquote().nospace() << "vrpath is no object, left as it is:" << file;
        return registration;
    }
    registration.runtimePath = registerDriver(*json, driverPath);
    registration.done = write(file, *json);
    if (registration.done)
        qInfo().noquote().nospace() << "Successfully set external_drivers to:" << driverPath;
    return registration;
}

bool clearDrivers(const QString &homeDir, Attempt attempt)
{
    const QString file = path(homeDir);
    if (attempt == Attempt::Again && QFile::exists(file) && !readForEdit(file))
        return false;
    bool held = false;
    std::optional<JsonDocument> json = read(file, &held);
    if (!json)
        return !held;
    const bool isRegistered = hasDrivers(*json);
    if (!clearDrivers(*json)) {
        qInfo("No external_drivers field found, nothing to clear");
        return true;
    }
    if (!write(file, *json))
        return !isRegistered;
    qInfo("Successfully cleared external_drivers array (empty array)");
    return true;
}

} // namespace openvr_paths
