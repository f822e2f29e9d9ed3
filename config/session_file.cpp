#include "config/session_file.h"

#include "base/file_io.h"
#include "base/json_document.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

namespace session_file {

namespace {

const QLatin1String kSessionSettings("sessionSettings");
const QLatin1String kContent("content");
const QLatin1String kName("name");

// The cable's two ends as audio devices of the PC: what is played into its
// input comes out of its output as a microphone.
const QLatin1String kCableInput("CABLE Input (VB-Audio Virtual Cable)");
const QLatin1String kCableOutput("CABLE Output (VB-Audio Virtual Cable)");

// Edits the object under `key` where there is one.
template <typename Edit>
void editObject(QJsonObject &parent, QLatin1String key, Edit edit)
{
    const QJsonValue value = parent.value(key);
    if (!value.isObject())
        return;
    QJsonObject object = value.toObject();
    edit(object);
    parent.insert(key, object);
}

void nameCable(QJsonObject &microphone)
{
    QJsonObject content = microphone.value(kContent).toObject();
    // The server has come to rely on this: the input device starts from a
    // member "content" of the content, not from the old input device, and the
    // look-up leaves a null there.
    QJsonObject input = content[kContent].toObject();
    QJsonObject output = content.value(QLatin1String("outputDeviceId")).toObject();
    input.insert(kName, kCableInput);
    output.insert(kName, kCableOutput);
    content.insert(QLatin1String("inputDeviceId"), input);
    content.insert(QLatin1String("outputDeviceId"), output);
    microphone.insert(kContent, content);
}

WriteResult write(const QByteArray &before, JsonDocument &json, const QJsonObject &root,
                  const OutsideRecord &record)
{
    // A list at the top level holds nothing of ours, but is the server's.
    if (json.document.isObject())
        json.document.setObject(root);
    const QByteArray after = toIndented(json);
    if (record.beforeEdit && after != before)
        record.beforeEdit(
            {OutsideEdit::ServerSettings, QFileInfo(path()).absoluteFilePath(), before, after});
    return replaceForeignFile(path(), after);
}

} // namespace

QString path()
{
    return QStringLiteral("./session.json");
}

QJsonObject withStreaming(QJsonObject root, double fps, bool audio,
                          const std::function<bool()> &hasVirtualCable)
{
    editObject(root, kSessionSettings, [&](QJsonObject &settings) {
        editObject(settings, QLatin1String("video"), [&](QJsonObject &video) {
            video.insert(QLatin1String("preferredFps"), fps);
            editObject(root, QLatin1String("openvr_config"), [&](QJsonObject &openvr) {
                openvr.insert(QLatin1String("refresh_rate"), fps);
            });
        });
        editObject(settings, QLatin1String("audio"), [&](QJsonObject &audioSettings) {
            editObject(audioSettings, QLatin1String("microphone"), [&](QJsonObject &microphone) {
                microphone.insert(QLatin1String("enabled"), audio);
                if (audio && hasVirtualCable())
                    nameCable(microphone);
            });
        });
    });
    return root;
}

std::optional<QJsonObject> withSerial(QJsonObject root, const QString &serial)
{
    const QLatin1String clients("clientConnections");
    if (!root.value(clients).toObject().isEmpty()) {
        root.insert(clients, QJsonObject());
        return root;
    }
    if (!root.value(kSessionSettings).isObject())
        return std::nullopt;
    editObject(root, kSessionSettings, [&](QJsonObject &settings) {
        editObject(settings, QLatin1String("headset"), [&](QJsonObject &headset) {
            headset.insert(QLatin1String("serialNumber"), serial);
        });
    });
    return root;
}

WriteResult editStreaming(double fps, bool audio, const std::function<bool()> &hasVirtualCable,
                          const OutsideRecord &record)
{
    finishReplacement(path());
    if (!QFile::exists(path())) {
        qInfo().noquote().nospace() << "no session json: " << path();
        return WriteResult::Ok;
    }
    const std::optional<QByteArray> text = readForEditPatiently(path());
    if (!text)
        return WriteResult::OpenFailed;
    JsonDocument json = parseJson(*text);
    if (!json.ok()) {
        qInfo("set session json parseError");
        static_cast<void>(setAside(QFileInfo(path()).absoluteFilePath(), record));
        return WriteResult::Ok;
    }
    return write(*text, json, withStreaming(json.document.object(), fps, audio, hasVirtualCable),
                 record);
}

WriteResult editSerial(const QString &serial, const OutsideRecord &record)
{
    finishReplacement(path());
    if (!QFile::exists(path()))
        return WriteResult::Ok;
    const std::optional<QByteArray> text = readForEditPatiently(path());
    if (!text)
        return WriteResult::OpenFailed;
    qInfo().noquote().nospace() << "session path:" << QFileInfo(path()).absoluteFilePath()
                                << "; sn: " << serial;
    JsonDocument json = parseJson(*text);
    if (!json.ok()) {
        qInfo("before session json parseError");
        static_cast<void>(setAside(QFileInfo(path()).absoluteFilePath(), record));
        return WriteResult::Ok;
    }
    if (const auto root = withSerial(json.document.object(), serial))
        return write(*text, json, *root, record);
    return WriteResult::Ok;
}

} // namespace session_file
