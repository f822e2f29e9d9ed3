#include "simpc/value_kind.h"

namespace {

QString secondsText(const int &milliseconds)
{
    return milliseconds < 0 ? QStringLiteral("never")
                            : QString::number(static_cast<double>(milliseconds) / 1000.0);
}

QString itself(const QString &text)
{
    return text;
}

} // namespace

ValueKind<bool> kinds::flag()
{
    return {
        QStringLiteral("flag"),
        [](ObjectReader &reader, const QString &key) { return reader.flag(key, false); },
        [](const bool &value) { return value ? QStringLiteral("true") : QStringLiteral("false"); }};
}

ValueKind<QString> kinds::text()
{
    return {QStringLiteral("text"),
            [](ObjectReader &reader, const QString &key) { return reader.text(key, QString()); },
            itself};
}

ValueKind<QString> kinds::textNotEmpty()
{
    return {QStringLiteral("text"),
            [](ObjectReader &reader, const QString &key) {
                const QString value = reader.text(key, QString());
                if (value.isEmpty())
                    reader.fail(key, QStringLiteral("is missing"));
                return value;
            },
            itself};
}

ValueKind<QStringList> kinds::texts()
{
    return {QStringLiteral("text or list of texts"),
            [](ObjectReader &reader, const QString &key) { return reader.texts(key, {}); },
            listText};
}

ValueKind<int> kinds::time()
{
    return {QStringLiteral("time"),
            [](ObjectReader &reader, const QString &key) { return reader.milliseconds(key, 0); },
            secondsText};
}

ValueKind<int> kinds::timeOrNever()
{
    return {QStringLiteral("time or `never`"),
            [](ObjectReader &reader, const QString &key) {
                const bool never = reader.value(key).toString() == QLatin1String("never");
                return never ? -1 : reader.milliseconds(key, 0);
            },
            secondsText};
}

QString kinds::oneOf(const QStringList &words)
{
    QString text;
    for (int i = 0; i < words.size(); ++i) {
        if (i > 0)
            text += i == words.size() - 1 ? QStringLiteral(" or ") : QStringLiteral(", ");
        text += '`' + words[i] + '`';
    }
    return text;
}

QString kinds::listText(const QStringList &entries)
{
    return entries.isEmpty() ? QStringLiteral("none") : entries.join(QStringLiteral(", "));
}
