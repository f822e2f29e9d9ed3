#include "config/recent_headsets.h"

#include "base/file_io.h"

namespace recent_headsets {

namespace {

const QLatin1Char kSeparator(';');

QString file(const QString &dataDir)
{
    return dataDir + QLatin1String("/setting.inf");
}

} // namespace

QStringList load(const QString &dataDir)
{
    const QByteArray text = readContent(file(dataDir)).value_or(QByteArray());
    return QString::fromUtf8(text.constData(), text.size()).split(kSeparator, Qt::SkipEmptyParts);
}

void save(const QString &dataDir, const QStringList &serials)
{
    static_cast<void>(replaceFile(file(dataDir), serials.join(kSeparator).toUtf8()));
}

} // namespace recent_headsets
