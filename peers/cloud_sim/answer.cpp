#include "peers/cloud_sim/answer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

// The macro has to stand outside any namespace.
static void initAnswerResources()
{
    Q_INIT_RESOURCE(cloud_sim);
}

namespace {

const QString folder = QStringLiteral(":/cloud_sim/answers/");
const QString suffix = QStringLiteral(".json");
const QStringList services{QStringLiteral("table"), QStringLiteral("version"),
                           QStringLiteral("events"), QStringLiteral("upload"),
                           QStringLiteral("installer")};

// Reads one answer's members and notices the ones that mean nothing.
class Reader
{
public:
    Reader(const QJsonObject &object, QString *error) : object_(object), error_(error) {}

    QJsonValue take(const char *key, QJsonValue::Type type)
    {
        const QJsonValue value = object_.take(QLatin1String(key));
        if (!value.isUndefined() && value.type() != type)
            fail(QStringLiteral("\"%1\" has the wrong type").arg(QLatin1String(key)));
        return value;
    }
    qint64 number(const char *key, qint64 otherwise)
    {
        return static_cast<qint64>(
            take(key, QJsonValue::Double).toDouble(static_cast<double>(otherwise)));
    }
    bool flag(const char *key, bool otherwise)
    {
        return take(key, QJsonValue::Bool).toBool(otherwise);
    }
    QByteArray text(const char *key) { return take(key, QJsonValue::String).toString().toUtf8(); }
    bool has(const char *key) const { return object_.contains(QLatin1String(key)); }
    QJsonValue any(const char *key) { return object_.take(QLatin1String(key)); }
    void done()
    {
        if (!object_.isEmpty())
            fail(QStringLiteral("\"%1\" means nothing").arg(object_.keys().first()));
    }
    void fail(const QString &what)
    {
        if (error_->isEmpty())
            *error_ = what;
    }

private:
    QJsonObject object_;
    QString *error_;
};

QByteArray contentOf(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = path + ": " + file.errorString();
        return {};
    }
    return file.readAll();
}

Answer readAnswer(const QJsonObject &object, QString *error)
{
    Reader reader(object, error);
    Answer answer;
    answer.status = static_cast<int>(reader.number("status", answer.status));
    const QJsonObject headers = reader.take("headers", QJsonValue::Object).toObject();
    for (auto it = headers.begin(); it != headers.end(); ++it)
        answer.headers.append({it.key().toUtf8(), it.value().toString().toUtf8()});
    answer.body = reader.text("body");
    if (reader.has("file"))
        answer.body = contentOf(QString::fromUtf8(reader.text("file")), error);
    if (reader.has("base64"))
        answer.body = QByteArray::fromBase64(reader.text("base64"));
    if (reader.has("json")) {
        const QJsonValue json = reader.any("json");
        const QJsonDocument document =
            json.isArray() ? QJsonDocument(json.toArray()) : QJsonDocument(json.toObject());
        answer.body = document.toJson(QJsonDocument::Compact);
    }
    answer.size = reader.number("size", answer.size);
    answer.length = reader.flag("length", answer.length);
    answer.chunked = reader.flag("chunked", answer.chunked);
    answer.pieces = static_cast<int>(reader.number("pieces", answer.pieces));
    answer.gap = static_cast<int>(reader.number("gapMilliseconds", answer.gap));
    answer.cutAfter = reader.number("cutAfter", answer.cutAfter);
    answer.silent = reader.flag("silent", answer.silent);
    answer.endless = reader.flag("endless", answer.endless);
    answer.raw = QByteArray::fromBase64(reader.text("raw"));
    reader.done();
    return answer;
}

// What is not mentioned is as in `like`, and that is "normal" by itself.
Answers readObject(QJsonObject object, bool isBase, QString *error)
{
    Answers all;
    object.remove(QStringLiteral("title"));
    const QString like = object.take(QStringLiteral("like")).toString(QStringLiteral("normal"));
    if (!isBase)
        all = answers::load(like, error);
    for (const QString &service : services) {
        if (!object.contains(service))
            continue;
        const QJsonValue value = object.take(service);
        const QJsonArray list = value.isArray() ? value.toArray() : QJsonArray{value};
        all[service].clear();
        for (const QJsonValue &entry : list)
            all[service].append(readAnswer(entry.toObject(), error));
    }
    if (!object.isEmpty() && error->isEmpty())
        *error = QStringLiteral("\"%1\" is no service").arg(object.keys().first());
    return all;
}

Answers read(const QString &path, QString *error)
{
    const QByteArray text = contentOf(path, error);
    if (!error->isEmpty())
        return {};
    QJsonParseError parsing = {};
    const QJsonDocument document = QJsonDocument::fromJson(text, &parsing);
    if (parsing.error != QJsonParseError::NoError) {
        *error = parsing.errorString();
        return {};
    }
    return readObject(document.object(), path == folder + "normal" + suffix, error);
}

} // namespace

QStringList answers::names()
{
    initAnswerResources();
    QStringList names;
    for (const QString &file : QDir(folder).entryList(QDir::Files, QDir::Name))
        names.append(QFileInfo(file).completeBaseName());
    return names;
}

QString answers::title(const QString &name)
{
    initAnswerResources();
    QFile file(folder + name + suffix);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object().value("title").toString();
}

Answers answers::load(const QString &nameOrPath, QString *error)
{
    initAnswerResources();
    error->clear();
    const QString compiledIn = folder + nameOrPath + suffix;
    const bool isName = !nameOrPath.contains('/') && QFile::exists(compiledIn);
    const Answers all = read(isName ? compiledIn : nameOrPath, error);
    if (!error->isEmpty())
        error->prepend(QStringLiteral("answers %1: ").arg(nameOrPath));
    return all;
}
