#include "app/crash_record.h"

#include "pc/crash_trap.h"

#include <QDebug>
#include <QFile>

namespace crash_record {

namespace {

const QString name = QStringLiteral("/crash");
const QString kept = QStringLiteral("/crash-last");
const QString recordEnd = QStringLiteral(".txt");
const QString dumpEnd = QStringLiteral(".dmp");

void keep(const QString &folder, const QString &end)
{
    if (!QFile::exists(folder + name + end))
        return;
    QFile::remove(folder + kept + end);
    QFile::rename(folder + name + end, folder + kept + end);
}

} // namespace

void arm(const QString &folder, const QString &version)
{
    crash_trap::set({folder + name + recordEnd, folder + name + dumpEnd},
                    QStringLiteral("KOLM_Streaming_Assistant ") + version);
}

std::optional<QString> take(const QString &folder)
{
    QFile record(folder + name + recordEnd);
    if (!record.open(QIODevice::ReadOnly))
        return std::nullopt;
    constexpr qint64 longest = 200; // bytes
    const QString why = QString::fromUtf8(record.readLine(longest)).trimmed();
    record.close();
    keep(folder, recordEnd);
    keep(folder, dumpEnd);
    qWarning().noquote().nospace()
        << "The last run broke: " << why << "; its record is kept in " << kept.mid(1) << recordEnd;
    return why;
}

} // namespace crash_record
