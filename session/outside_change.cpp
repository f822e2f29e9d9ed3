#include "session/outside_change.h"

#include "base/json_document.h"

#include <QCryptographicHash>
#include <QDir>
#include <QJsonArray>

#include <algorithm>

namespace outside_change {

namespace {

const QLatin1String kId("id");
const QLatin1String kTime("time");
const QLatin1String kChange("change");
const QLatin1String kPath("path");
const QLatin1String kNewPath("newPath");
const QLatin1String kBefore("before");
const QLatin1String kAfter("after");
const QLatin1String kForwards("forwards");

const QLatin1String kWritten("written");
const QLatin1String kGivenBack("given back");

// In the order of OutsideChange::Kind.
const QLatin1String kinds[] = {QLatin1String("driver list"), QLatin1String("server settings"),
                               QLatin1String("set aside"), QLatin1String("forwards")};

QString text(const QDateTime &time)
{
    return time.toUTC().toString(Qt::ISODateWithMs);
}

void add(QList<OutsideChange> &changes, const QJsonObject &line)
{
    const auto kind = std::find(std::begin(kinds), std::end(kinds), line.value(kChange).toString());
    if (kind == std::end(kinds))
        return;
    OutsideChange change;
    change.id = line.value(kId).toInt();
    change.kind = static_cast<OutsideChange::Kind>(kind - std::begin(kinds));
    change.time = QDateTime::fromString(line.value(kTime).toString(), Qt::ISODateWithMs);
    change.path = line.value(kPath).toString();
    change.newPath = line.value(kNewPath).toString();
    change.before = QByteArray::fromBase64(line.value(kBefore).toString().toLatin1());
    if (line.contains(kAfter))
        change.afters.append(line.value(kAfter).toString().toLatin1());
    for (const QJsonValue &forward : line.value(kForwards).toArray())
        change.forwards.append(forward.toString());
    changes.append(change);
}

} // namespace

QByteArray fingerprint(const QByteArray &content)
{
    return QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
}

QStringList foreignDrivers(const QByteArray &document, const QString &ownDriver)
{
    const JsonDocument json = parseJson(document);
    QStringList drivers;
    for (const QJsonValue &value :
         json.document.object().value(QLatin1String("external_drivers")).toArray()) {
        const QString driver = json.text(value);
        if (!driver.isEmpty() && QDir::cleanPath(driver) != QDir::cleanPath(ownDriver))
            drivers.append(driver);
    }
    return drivers;
}

QJsonObject lineOf(const OutsideChange &change)
{
    QJsonObject line{{kId, change.id}, {kTime, text(change.time)}, {kChange, kinds[change.kind]}};
    if (!change.path.isEmpty())
        line.insert(kPath, change.path);
    if (!change.newPath.isEmpty())
        line.insert(kNewPath, change.newPath);
    if (!change.afters.isEmpty()) {
        line.insert(kBefore, QString::fromLatin1(change.before.toBase64()));
        line.insert(kAfter, QString::fromLatin1(change.afters.first()));
    }
    if (!change.forwards.isEmpty())
        line.insert(kForwards, QJsonArray::fromStringList(change.forwards));
    return line;
}

QJsonObject lineOfAfter(int id, const QByteArray &fingerprint)
{
    return {{kId, id}, {kChange, kWritten}, {kAfter, QString::fromLatin1(fingerprint)}};
}

QJsonObject lineOfReturn(int id, const QDateTime &time)
{
    return {{kId, id}, {kTime, text(time)}, {kChange, kGivenBack}};
}

void take(QList<OutsideChange> &changes, const QJsonObject &line)
{
    const QString what = line.value(kChange).toString();
    if (what != kWritten && what != kGivenBack) {
        add(changes, line);
        return;
    }
    for (OutsideChange &change : changes) {
        if (change.id != line.value(kId).toInt())
            continue;
        if (what == kGivenBack)
            change.isGivenBack = true;
        else
            change.afters.append(line.value(kAfter).toString().toLatin1());
    }
}

} // namespace outside_change
