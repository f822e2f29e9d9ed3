#include "session/give_back.h"

#include "base/file_io.h"
#include "base/json_document.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <optional>

namespace give_back {

namespace {

bool write(const QString &path, const QByteArray &content)
{
    return replaceForeignFile(path, content) == WriteResult::Ok;
}

bool isAsWeLeftIt(const OutsideChange &change, const QByteArray &now)
{
    return change.afters.contains(outside_change::fingerprint(now));
}

bool restoreDrivers(const OutsideChange &change, const QByteArray &now, const QString &ownDriver)
{
    if (isAsWeLeftIt(change, now))
        return write(change.path, change.before);
    const QByteArray edited = withDrivers(now, change.before, ownDriver);
    return edited == now || (!edited.isNull() && write(change.path, edited));
}

bool restoreSettings(const OutsideChange &change, const QByteArray &now)
{
    if (!isAsWeLeftIt(change, now) && !write(change.path + QLatin1String(".replaced"), now))
        return false;
    return write(change.path, change.before);
}

bool restoreDocument(const OutsideChange &change, const QString &ownDriver)
{
    finishReplacement(change.path);
    const std::optional<QByteArray> now = readForEditPatiently(change.path);
    if (!now)
        return !QFile::exists(change.path) && write(change.path, change.before);
    if (*now == change.before)
        return true;
    return change.kind == OutsideChange::DriverList ? restoreDrivers(change, *now, ownDriver)
                                                    : restoreSettings(change, *now);
}

} // namespace

bool isPossible(const OutsideChange &change)
{
    if (change.kind == OutsideChange::SetAside)
        return !QFile::exists(change.path) || !QFile::exists(change.newPath);
    // Without its folder, the program whose document it was is gone as well.
    return change.kind != OutsideChange::Forwards &&
           QFileInfo::exists(QFileInfo(change.path).path());
}

bool isInForce(const OutsideChange &change, const QString &ownDriver)
{
    if (change.isGivenBack)
        return false;
    if (change.kind == OutsideChange::SetAside)
        return QFile::exists(change.newPath);
    if (change.kind == OutsideChange::Forwards)
        return true;
    const std::optional<QByteArray> now = readContent(change.path);
    if (!now || change.kind == OutsideChange::ServerSettings)
        return now != change.before;
    const QStringList present = outside_change::foreignDrivers(*now, ownDriver);
    const QStringList lost = outside_change::foreignDrivers(change.before, ownDriver);
    for (const QString &driver : lost) {
        if (!present.contains(driver))
            return true;
    }
    return isAsWeLeftIt(change, *now) && *now != change.before;
}

bool restore(const OutsideChange &change, const QString &ownDriver)
{
    switch (change.kind) {
    case OutsideChange::DriverList:
    case OutsideChange::ServerSettings:
        return restoreDocument(change, ownDriver);
    case OutsideChange::SetAside:
        // Killed before it was renamed, or gone since: there is nothing to do.
        return !QFile::exists(change.newPath) || QFile::rename(change.newPath, change.path);
    case OutsideChange::Forwards:
        break;
    }
    return false;
}

QByteArray withDrivers(const QByteArray &now, const QByteArray &before, const QString &ownDriver)
{
    JsonDocument json = parseJson(now);
    if (!json.ok() || !json.document.isObject())
        return {};
    const QStringList present = outside_change::foreignDrivers(now, ownDriver);
    QStringList drivers = present + outside_change::foreignDrivers(before, ownDriver);
    drivers.removeDuplicates();
    if (drivers == outside_change::foreignDrivers(now, QString()))
        return now;
    QJsonObject root = json.document.object();
    root.insert(QLatin1String("external_drivers"), QJsonArray::fromStringList(drivers));
    json.document.setObject(root);
    return toIndented(json);
}

} // namespace give_back
