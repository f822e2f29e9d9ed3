#include "config/settings_file.h"

#include "base/json_document.h"
#include "config/device_settings.h"

#include <utility>

namespace settings_file {

namespace {

const QLatin1String kD1("D1");
const QLatin1String kD2("D2");
const QLatin1String kD3("D3");
const QLatin1String kLastSn("lastSn");
const QLatin1String kWiredOrWireless("wiredOrWireless");

QJsonObject modelObject(const QJsonObject &root, QLatin1String key)
{
    if (!root.contains(key))
        return device_settings::fresh();
    QJsonObject object = root.value(key).toObject();
    device_settings::repair(object);
    return object;
}

void insertUnlessEmpty(QJsonObject &root, QLatin1String key, const QJsonObject &object)
{
    if (!object.isEmpty())
        root.insert(key, object);
}

void carryOver(QJsonObject &object, const QJsonObject &before, const QJsonObject &now)
{
    for (auto member = now.begin(); member != now.end(); ++member) {
        if (member.value() != before.value(member.key()))
            object.insert(member.key(), member.value());
    }
}

} // namespace

Reading read(const QByteArray &text, StoredSettings before)
{
    const JsonDocument json = parseJson(text);
    const QJsonObject root = json.document.object();
    Reading result{std::move(before), json.ok()};
    StoredSettings &settings = result.settings;
    settings.numberMark = json.numberMark;
    settings.d1 = modelObject(root, kD1);
    settings.d2 = modelObject(root, kD2);
    settings.d3 = modelObject(root, kD3);
    if (root.contains(kLastSn))
        settings.serial = json.text(root.value(kLastSn));
    if (root.contains(kWiredOrWireless))
        settings.link = static_cast<LinkKind>(root.value(kWiredOrWireless).toInt());
    return result;
}

StoredSettings merge(const Reading &file, const StoredSettings &before, const StoredSettings &now)
{
    if (!file.isJson)
        return now;
    StoredSettings merged = file.settings;
    carryOver(merged.d1, before.d1, now.d1);
    carryOver(merged.d2, before.d2, now.d2);
    carryOver(merged.d3, before.d3, now.d3);
    if (now.serial != before.serial)
        merged.serial = now.serial;
    if (now.link != before.link)
        merged.link = now.link;
    return merged;
}

QByteArray write(const StoredSettings &settings)
{
    QJsonObject root;
    insertUnlessEmpty(root, kD1, settings.d1);
    insertUnlessEmpty(root, kD2, settings.d2);
    insertUnlessEmpty(root, kD3, settings.d3);
    root.insert(kLastSn, settings.serial);
    root.insert(kWiredOrWireless, static_cast<int>(settings.link));
    JsonDocument json;
    json.document.setObject(root);
    json.numberMark = settings.numberMark;
    return toIndented(json);
}

} // namespace settings_file
