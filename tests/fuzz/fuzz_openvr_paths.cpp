// Any bytes as "openvrpaths.vrpath": the edits touch nothing but the drivers,
// and what they write is JSON again.
#include "base/json_document.h"
#include "config/openvr_paths.h"
#include "tests/fuzz/require.h"

#include <QJsonArray>
#include <QJsonObject>

#include <cstdint>

namespace {

const QLatin1String kDrivers("external_drivers");
const QLatin1String kRuntime("runtime");

QJsonObject foreignPart(const JsonDocument &json)
{
    QJsonObject root = json.document.object();
    root.remove(kDrivers);
    if (root.value(kRuntime).isNull())
        root.remove(kRuntime);
    return root;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    JsonDocument json = parseJson(text);
    if (!json.ok()) {
        REQUIRE(!openvr_paths::hasDrivers(json));
        return 0;
    }
    const bool hadRuntime = !json.document.object().value(kRuntime).toArray().isEmpty();
    const bool hadMember = json.document.object().contains(kDrivers);
    if (openvr_paths::hasDrivers(json))
        REQUIRE(hadMember);

    JsonDocument cleared = json;
    REQUIRE(openvr_paths::clearDrivers(cleared) == hadMember);
    REQUIRE(!openvr_paths::hasDrivers(cleared));
    REQUIRE(foreignPart(cleared) == foreignPart(json));

    const QString driver = QStringLiteral("C:\\dir\\\u9a71");
    JsonDocument registered = json;
    const std::optional<QString> runtime = openvr_paths::registerDriver(registered, driver);
    REQUIRE(openvr_paths::hasDrivers(registered));
    REQUIRE(foreignPart(registered) == foreignPart(json));
    REQUIRE(registered.document.object().contains(kRuntime));
    REQUIRE(runtime.has_value() == hadRuntime);

    const QByteArray written = toIndented(registered);
    JsonDocument again = parseJson(written);
    REQUIRE(again.ok());
    REQUIRE(again.document.object().value(kDrivers).toArray() == QJsonArray{driver});
    REQUIRE(openvr_paths::registerDriver(again, driver) == runtime);
    REQUIRE(toIndented(again) == written);
    return 0;
}
