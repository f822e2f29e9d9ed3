// Any bytes as "set.json": three whole models come out, nothing that a model
// held is lost, and what is saved loads as it was saved.
#include "base/json_document.h"
#include "config/device_settings.h"
#include "config/settings_file.h"
#include "tests/fuzz/require.h"

#include <cstdint>

namespace {

QByteArray textOf(const QJsonObject &object, const QByteArray &numberMark)
{
    JsonDocument json;
    json.document.setObject(object);
    json.numberMark = numberMark;
    return toIndented(json);
}

void requireKept(const JsonDocument &before, const char *key, const QJsonObject &object,
                 const StoredSettings &settings)
{
    static const QStringList members = device_settings::fresh().keys();
    for (const QString &member : members)
        REQUIRE(object.contains(member));
    const QJsonObject held = before.document.object().value(QLatin1String(key)).toObject();
    QJsonObject still;
    for (auto member = held.begin(); member != held.end(); ++member)
        still.insert(member.key(), object.value(member.key()));
    if (before.numberMark.isEmpty())
        REQUIRE(still == held);
    else
        REQUIRE(textOf(still, settings.numberMark) == textOf(held, before.numberMark));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const JsonDocument before = parseJson(text);

    const settings_file::Reading read = settings_file::read(text);
    REQUIRE(read.isJson == before.ok());
    const StoredSettings &settings = read.settings;
    if (!before.ok()) {
        static const QJsonObject fresh = device_settings::fresh();
        REQUIRE(settings.d1 == fresh && settings.d2 == fresh && settings.d3 == fresh);
        return 0;
    }
    requireKept(before, "D1", settings.d1, settings);
    requireKept(before, "D2", settings.d2, settings);
    requireKept(before, "D3", settings.d3, settings);
    const QJsonValue serial = before.document.object().value(QLatin1String("lastSn"));
    REQUIRE(settings.serial == (serial.isUndefined() ? QStringLiteral("D3") : before.text(serial)));

    const QByteArray saved = settings_file::write(settings);
    const settings_file::Reading again = settings_file::read(saved);
    REQUIRE(again.isJson);
    const StoredSettings &loaded = again.settings;
    REQUIRE(loaded.serial == settings.serial);
    REQUIRE(loaded.link == settings.link);
    REQUIRE(settings_file::write(loaded) == saved);
    return 0;
}
