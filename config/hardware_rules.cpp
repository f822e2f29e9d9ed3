#include "config/hardware_rules.h"

#include "base/file_io.h"

#include <QDebug>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QStringList>

namespace {

const QString rulesFile = QStringLiteral("./compare.json");

constexpr int sufficientProcessor = 4;
constexpr int weakProcessor = 1;
constexpr int goodCard = 8;
constexpr int sufficientCard = 4;
constexpr int firstAv1Series = 4000;

QStringList fragments(const QJsonObject &rules, QLatin1String device, QLatin1String list)
{
    QStringList texts;
    const QJsonArray array = rules.value(device).toObject().value(list).toArray();
    for (const QJsonValue &value : array)
        texts.append(value.toVariant().toString());
    return texts;
}

bool anyIn(const QString &name, const QStringList &texts)
{
    for (const QString &text : texts) {
        if (name.contains(text))
            return true;
    }
    return false;
}

} // namespace

std::optional<QJsonObject> hardware_rules::read()
{
    if (!QFile::exists(rulesFile))
        return std::nullopt;
    return parse(readContent(rulesFile).value_or(QByteArray()));
}

std::optional<QJsonObject> hardware_rules::parse(const QByteArray &text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError) {
        qInfo("compare json parseError: %d", int(error.error));
        return std::nullopt;
    }
    return document.object();
}

hardware_rules::Score hardware_rules::score(const QJsonObject &rules, const QString &cpuName,
                                            const QString &gpuName)
{
    const QLatin1String cpu("cpu");
    const QLatin1String graphics("graphics");
    const QLatin1String mid("mid");
    Score score;
    if (anyIn(cpuName, fragments(rules, cpu, mid)))
        score.processor = sufficientProcessor;
    else if (anyIn(cpuName, fragments(rules, cpu, QLatin1String("low"))))
        score.processor = weakProcessor;
    // The weak cards have a list, but it weighs nothing.
    if (anyIn(gpuName, fragments(rules, graphics, QLatin1String("high"))))
        score.graphics = goodCard;
    else if (anyIn(gpuName, fragments(rules, graphics, mid)))
        score.graphics = sufficientCard;
    return score;
}

int hardware_rules::scoreSilently(const QString &cpuName, const QString &gpuName)
{
    const QByteArray text = readContent(rulesFile).value_or(QByteArray());
    const Score found = score(QJsonDocument::fromJson(text).object(), cpuName, gpuName);
    return found.processor + found.graphics;
}

bool hardware_rules::namesAv1Card(const QJsonObject &rules, const QString &gpuName)
{
    static const QRegularExpression series(QStringLiteral("RTX\\s*(\\d{4})"));
    const QStringList cards = fragments(rules, QLatin1String("graphics"), QLatin1String("high"));
    for (const QString &card : cards) {
        if (!gpuName.contains(card) || !card.startsWith(QLatin1String("RTX")))
            continue;
        const QRegularExpressionMatch match = series.match(card);
        if (match.hasMatch() && match.captured(1).toInt() >= firstAv1Series)
            return true;
    }
    return false;
}
