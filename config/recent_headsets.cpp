#include "config/recent_headsets.h"

#include "base/file_io.h"

#include <QFile>

namespace recent_headsets {

namespace {

const QLatin1Char kSeparator(';');

QString file(const QString &dataDir)
{
    return dataDir + QLatin1String("/setting.inf");
}

} // namespace

QStringList load(const QString &dataDir, bool *held)
{
    finishReplacement(file(dataDir));
    const std::optional<QByteArray> content = readPatiently(file(dataDir));
    if (held)
        *held = !content && QFile::exists(file(dataDir));
    const QByteArray text = content.value_or(QByteArray());
    return QString::fromUtf8(text.constData(), text.size()).split(kSeparator, Qt::SkipEmptyParts);
}

void save(const QString &dataDir, const QStringList &serials)
{
    static_cast<void>(replaceFile(file(dataDir), serials.join(kSeparator).toUtf8()));
}

void add(const QString &dataDir, const QStringList &serials)
{
    bool held = false;
    QStringList all = serials + load(dataDir, &held);
    all.removeDuplicates();
    if (!held)
        save(dataDir, all);
}

} // namespace recent_headsets
