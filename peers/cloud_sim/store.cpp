#include "peers/cloud_sim/store.h"

#include <QDir>
#include <QSaveFile>

#include <iostream>

namespace {

void write(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        std::cerr << "cloud-sim: cannot write " << path.toStdString() << std::endl;
}

} // namespace

void Store::add(const QString &tag, const Request &request)
{
    if (folder_.isEmpty())
        return;
    const QString folder = folder_ + '/' + tag;
    QDir().mkpath(folder);
    const QString stem =
        QStringLiteral("%1/%2").arg(folder).arg(++counts_[tag], 4, 10, QLatin1Char('0'));
    write(stem + ".body", request.body);
    write(stem + ".head", request.head);
}

QString Store::answersFile(const QString &tag) const
{
    if (folder_.isEmpty() || tag.isEmpty())
        return {};
    const QString path = folder_ + '/' + tag + "/answers.json";
    return QFile::exists(path) ? path : QString();
}
