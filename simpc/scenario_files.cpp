#include "simpc/scenario_files.h"

#include "base/file_io.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

// The macro has to stand outside any namespace.
static void initResources()
{
    Q_INIT_RESOURCE(simpc);
}

namespace {

struct SeededName
{
    const char *name; // key in a scenario and name of the default's resource
    ScenarioFile::Place place;
    const char *path;
};

constexpr SeededName seededNames[] = {
    {"session.json", ScenarioFile::Work, "session.json"},
    {"set.json", ScenarioFile::Home, ".local/share/KOLM/KOLM_Streaming_Assistant/set.json"},
    {"setting.inf", ScenarioFile::Home, ".local/share/KOLM/KOLM_Streaming_Assistant/setting.inf"},
    {"openvrpaths.vrpath", ScenarioFile::Home, "AppData/Local/openvr/openvrpaths.vrpath"},
    {"compare.json", ScenarioFile::Work, "compare.json"},
};

QByteArray usualContent(const QString &name)
{
    initResources();
    QFile file(QStringLiteral(":/simpc/files/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

std::vector<ScenarioFile> scenario::readFiles(ObjectReader reader, const JsonDocument &whole)
{
    std::vector<ScenarioFile> files;
    for (const SeededName &seeded : seededNames) {
        const QString name = QString::fromLatin1(seeded.name);
        ScenarioFile file;
        file.place = seeded.place;
        file.path = QString::fromLatin1(seeded.path);
        const QJsonValue value = reader.value(name);
        if (value.isUndefined()) {
            file.content = usualContent(name);
        } else if (value.isNull()) {
            file.exists = false;
        } else if (value.isString()) {
            file.content = value.toString().toUtf8();
        } else if (value.isObject()) {
            // The numbers come out as they stand in the scenario file.
            JsonDocument document = whole;
            document.document = QJsonDocument(value.toObject());
            file.content = toIndented(document);
        } else {
            reader.fail(name, QStringLiteral("must be an object, a text or null"));
        }
        files.push_back(file);
    }
    reader.done();
    return files;
}

KeyRows scenario::fileKeys()
{
    KeyRows rows;
    for (const SeededName &seeded : seededNames) {
        const QString name = QString::fromLatin1(seeded.name);
        const QString place = seeded.place == ScenarioFile::Home
                                  ? QStringLiteral("below the home folder")
                                  : QStringLiteral("in the working folder");
        rows.push_back({name, QStringLiteral("object, text or `null`"),
                        QStringLiteral("[%1](files/%1)").arg(name),
                        QStringLiteral("`%1` %2").arg(QString::fromLatin1(seeded.path), place)});
    }
    return rows;
}

bool scenario::layOutFiles(const std::vector<ScenarioFile> &files, const QString &home,
                           const QString &work, QString *error)
{
    error->clear();
    for (const ScenarioFile &file : files) {
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
