#include "config/usage_choice.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString key = QStringLiteral("usageEvents");

QString fileIn(const QString &dataDir)
{
    return dataDir + QStringLiteral("/usage.json");
}

} // namespace

bool usage_choice::isOn(const QString &dataDir)
{
    const QString path = fileIn(dataDir);
    finishReplacement(path);
    if (!QFileInfo::exists(path))
        return true;
    const QByteArray content = readPatiently(path).value_or(QByteArray());
    return QJsonDocument::fromJson(content).object().value(key).toBool(false);
}

WriteResult usage_choice::store(const QString &dataDir, bool on)
{
    return replaceFile(fileIn(dataDir), QJsonDocument(QJsonObject{{key, on}}).toJson());
}
