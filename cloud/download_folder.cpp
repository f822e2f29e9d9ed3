#include "cloud/download_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

bool isInstallerName(const QString &name)
{
    return name.endsWith(QLatin1String(".exe"), Qt::CaseInsensitive) ||
           name.endsWith(QLatin1String(".msi"), Qt::CaseInsensitive);
}

void prepareDownloadFolder(const QString &folder, const QString &name)
{
    QDir().mkpath(folder);
    if (QFileInfo(QDir::cleanPath(folder)).isSymbolicLink())
        return;
    // While a file is written it has six more characters behind its name.
    static const QRegularExpression unfinished(QStringLiteral("\\.(exe|msi)\\.[A-Za-z0-9]{6}$"),
                                               QRegularExpression::CaseInsensitiveOption);
    const auto entries = QDir(folder).entryInfoList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QFileInfo &entry : entries) {
        const bool isOurs =
            isInstallerName(entry.fileName()) || unfinished.match(entry.fileName()).hasMatch();
        const bool isInPlace = entry.fileName() == name && entry.isFile();
        if (isOurs && !isInPlace)
            QFile::remove(entry.filePath());
    }
}
