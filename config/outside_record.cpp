#include "config/outside_record.h"

#include <QFile>
#include <QFileInfo>

namespace {

QString freeName(const QString &path)
{
    QString name = path + QLatin1String(".bad");
    for (int number = 2; QFileInfo::exists(name); ++number)
        name = QStringLiteral("%1-%2.bad").arg(path).arg(number);
    return name;
}

} // namespace

bool setAside(const QString &path, const OutsideRecord &record)
{
    const QString newPath = freeName(path);
    if (record.beforeSetAside)
        record.beforeSetAside(path, newPath);
    return QFile::rename(path, newPath);
}
