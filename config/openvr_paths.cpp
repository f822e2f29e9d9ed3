#include "config/openvr_paths.h"

#include "base/file_io.h"

#include <QDebug>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>

namespace openvr_paths {

namespace {

const QLatin1String kDrivers("external_drivers");

using Reader = std::optional<QByteArray> (*)(const QString &);

struct Document
{
    QByteArray text;
    JsonDocument json;
};

// The document in the file at `path`, or nothing, `problem`, and a line in the log.
std::optional<Document> read(const QString &path, Reader reader, Problem &problem)
{
    finishReplacement(path);
    if (!QFile::exists(path)) {
        qInfo().noquote().nospace() << "Config file does not exist:" << path;
        problem = Problem::Missing;
        return std::nullopt;
    }
    const std::optional<QByteArray> text = reader(path);
    if (!text) {
        problem = Problem::Unreadable;
        qWarning().noquote().nospace() << "Failed to open file for reading:" << path;
        return std::nullopt;
    }
    JsonDocument json = parseJson(*text);
    if (!json.ok()) {
        problem = Problem::NoJson;
        qInfo().noquote().nospace() << "vrpath parseError:" << json.error.errorString();
        return std::nullopt;
    }
    return Document{*text, json};
}

Problem write(const QString &path, const Document &document, const OutsideRecord &record)
{
    const QByteArray content = toIndented(document.json);
    if (record.beforeEdit && content != document.text)
        record.beforeEdit({OutsideEdit::DriverList, path, document.text, content});
    switch (replaceForeignFile(path, content)) {
    case WriteResult::OpenFailed:
        qWarning().noquote().nospace() << "Failed to open file for writing:" << path;
        return Problem::NotWritable;
    case WriteResult::WriteFailed:
        qWarning().noquote().nospace() << "Failed to write to file:" << path;
        return Problem::NotWritten;
    case WriteResult::Ok:
        break;
    }
    return Problem::None;
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

Registration registerDriver(const QString &homeDir, const QString &driverPath,
                            const OutsideRecord &record)
{
    Registration registration;
    const QString file = path(homeDir);
    std::optional<Document> document = read(file, readPatiently, registration.problem);
    if (!document)
        return registration;
    if (!document->json.document.isObject()) {
        // Nobody knows whose it is and what it means.
        qWarning().noquote().nospace() << "vrpath is no object, left as it is:" << file;
        registration.problem = Problem::NoJson;
        return registration;
    }
    registration.runtimePath = registerDriver(document->json, driverPath);
    registration.problem = write(file, *document, record);
    if (registration.problem == Problem::None)
        qInfo().noquote().nospace() << "Successfully set external_drivers to:" << driverPath;
    return registration;
}

bool clearDrivers(const QString &homeDir, Attempt attempt, const OutsideRecord &record)
{
    const QString file = path(homeDir);
    if (attempt == Attempt::Again && QFile::exists(file) && !readForEdit(file))
        return false;
    Problem problem = Problem::None;
    std::optional<Document> document = read(file, readContent, problem);
    if (!document)
        return problem != Problem::Unreadable;
    const bool isRegistered = hasDrivers(document->json);
    if (!clearDrivers(document->json)) {
        qInfo("No external_drivers field found, nothing to clear");
        return true;
    }
    if (write(file, *document, record) != Problem::None)
        return !isRegistered;
    qInfo("Successfully cleared external_drivers array (empty array)");
    return true;
}

} // namespace openvr_paths
