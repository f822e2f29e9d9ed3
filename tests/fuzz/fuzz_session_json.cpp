// Any bytes as "session.json": both edits touch only what is theirs, can be
// repeated, and what they write is JSON again.
#include "base/json_document.h"
#include "config/session_file.h"
#include "tests/fuzz/require.h"

#include <cstdint>
#include <initializer_list>

namespace {

const QLatin1String kContent("content");

// Edits the object at the end of a path of objects, if there is one.
template <typename Edit>
void at(QJsonObject &root, std::initializer_list<const char *> keys, Edit edit)
{
    if (keys.size() == 0) {
        edit(root);
        return;
    }
    const QLatin1String key(*keys.begin());
    if (!root.value(key).isObject())
        return;
    QJsonObject object = root.value(key).toObject();
    // An initializer_list cannot be shortened; the paths are not long.
    const char *const *rest = keys.begin() + 1;
    switch (keys.size()) {
    case 1:
        edit(object);
        break;
    case 2:
        at(object, {rest[0]}, edit);
        break;
    default:
        at(object, {rest[0], rest[1]}, edit);
        break;
    }
    root.insert(key, object);
}

// The document without anything that an edit may touch.
QJsonObject foreignPart(QJsonObject root)
{
    const auto without = [](const char *key) {
        return [key](QJsonObject &object) { object.remove(QLatin1String(key)); };
    };
    root.remove(QLatin1String("clientConnections"));
    at(root, {"openvr_config"}, without("refresh_rate"));
    at(root, {"sessionSettings", "video"}, without("preferredFps"));
    at(root, {"sessionSettings", "headset"}, without("serialNumber"));
    at(root, {"sessionSettings", "audio", "microphone"}, [&](QJsonObject &microphone) {
        microphone.remove(QLatin1String("enabled"));
        QJsonObject content = microphone.take(kContent).toObject();
        content.remove(QLatin1String("inputDeviceId"));
        if (content.value(kContent).isNull())
            content.remove(kContent);
        const QLatin1String outputKey("outputDeviceId");
        QJsonObject output = content.take(outputKey).toObject();
        output.remove(QLatin1String("name"));
        if (!output.isEmpty())
            content.insert(outputKey, output);
        if (!content.isEmpty())
            microphone.insert(kContent, content);
    });
    return root;
}

QByteArray written(JsonDocument json, const QJsonObject &root)
{
    json.document.setObject(root);
    return toIndented(json);
}

// Qt is the judge of what is JSON; only a number that it finds too large or
// too small does not make a document bad.
void requireQtsOpinion(const QByteArray &text, const JsonDocument &json)
{
    QJsonParseError error;
    QJsonDocument::fromJson(text, &error);
    if (error.error == QJsonParseError::NoError)
        REQUIRE(json.ok());
    else if (json.ok())
        REQUIRE(error.error == QJsonParseError::IllegalNumber);
    else
        REQUIRE(error.error == json.error.error);
}

void editStreaming(const JsonDocument &json, double fps, bool audio, bool cable)
{
    const auto hasCable = [cable] { return cable; };
    const QJsonObject before = json.document.object();
    const QJsonObject after = session_file::withStreaming(before, fps, audio, hasCable);
    REQUIRE(foreignPart(after) == foreignPart(before));

    const QByteArray text = written(json, after);
    const JsonDocument again = parseJson(text);
    REQUIRE(again.ok());
    REQUIRE(written(again, session_file::withStreaming(again.document.object(), fps, audio,
                                                       hasCable)) == text);
}

void editSerial(const JsonDocument &json)
{
    const QString serial = QStringLiteral("D3-1");
    const QJsonObject before = json.document.object();
    const auto first = session_file::withSerial(before, serial);
    if (!first)
        return;
    REQUIRE(foreignPart(*first) == foreignPart(before));
    const QByteArray text = written(json, *first);
    const JsonDocument again = parseJson(text);
    REQUIRE(again.ok());
    // The first edit may have been spent on the clients; after the second one
    // nothing is left to do.
    if (const auto second = session_file::withSerial(again.document.object(), serial)) {
        REQUIRE(foreignPart(*second) == foreignPart(again.document.object()));
        REQUIRE(session_file::withSerial(*second, serial) == second);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const JsonDocument json = parseJson(text);
    requireQtsOpinion(text, json);
    if (!json.ok())
        return 0;

    // The text as it is written is read as the same text again.
    const QByteArray unedited = toIndented(json);
    REQUIRE(toIndented(parseJson(unedited)) == unedited);

    editStreaming(json, 90.0, true, true);
    editStreaming(json, 72.0, size % 2 == 0, false);
    editSerial(json);
    return 0;
}
