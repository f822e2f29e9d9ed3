#include "config/recent_headsets.h"

#include <QFile>

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
    return loadUnlessHeld(dataDir).value_or(QStringList());
}

std::optional<QStringList> loadUnlessHeld(const QString &dataDir)
{
    finishReplacement(file(dataDir));
    const std::optional<QByteArray> content = readPatiently(file(dataDir));
    if (!content && QFile::exists(file(dataDir)))
        return std::nullopt;
    const QByteArray text = content.value_or(QByteArray());
    return QString::fromUtf8(text.constData(), text.size()).split(kSeparator, Qt::SkipEmptyParts);
}

WriteResult save(const QString &dataDir, const QStringList &serials)
{
    return replaceFile(file(dataDir), serials.join(kSeparator).toUtf8());
}

WriteResult add(const QString &dataDir, const QStringList &serials)
{
    const std::optional<QStringList> stored = loadUnlessHeld(dataDir);
    if (!stored)
        return WriteResult::OpenFailed;
    QStringList all = serials + *stored;
    all.removeDuplicates();
    return save(dataDir, all);
}

} // namespace recent_headsets
