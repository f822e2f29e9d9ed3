#include "simpc/scenario_files.h"

#include "base/file_io.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

bool scenario::layOutFiles(const Scenario &scenario, const QString &home, const QString &work,
                           QString *error)
{
    error->clear();
    for (const ScenarioFile &file : scenario.files) {
        const QDir place(file.place == ScenarioFile::Home ? home : work);
        const QString path = place.absoluteFilePath(file.path);
        bool ok = true;
        if (file.exists)
            ok = QDir().mkpath(QFileInfo(path).path()) &&
                 replaceFile(path, file.content) == WriteResult::Ok;
        else if (QFile::exists(path))
            ok = QFile::remove(path);
        if (!ok) {
            *error = QStringLiteral("cannot %1 %2")
                         .arg(file.exists ? QStringLiteral("write") : QStringLiteral("remove"),
                              QDir::toNativeSeparators(path));
            return false;
        }
    }
    return true;
}
