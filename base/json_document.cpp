#include "base/json_document.h"

#include <QJsonArray>
#include <QUuid>

namespace {

bool isNumberByte(char c)
{
    return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

// Whether `token` is a number by the grammar of JSON: only then may it be
// hidden from the parser, which would complain about anything else.
bool isJsonNumber(const QByteArray &token)
{
    int i = 0;
    const int n = token.size();
    const auto digits = [&] {
        const int first = i;
        while (i < n && token[i] >= '0' && token[i] <= '9')
            ++i;
        return i > first;
    };
    if (i < n && token[i] == '-')
        ++i;
    if (i < n && token[i] == '0')
        ++i;
    else if (!digits())
        return false;
    if (i < n && token[i] == '.') {
        ++i;
        if (!digits())
            return false;
    }
    if (i < n && (token[i] == 'e' || token[i] == 'E')) {
        ++i;
        if (i < n && (token[i] == '+' || token[i] == '-'))
            ++i;
        if (!digits())
            return false;
    }
    return i == n;
}

// Whether a JSON value gives this number back with the same digits. Short
// numbers always do, up to their notation (1.50, 1e3).
bool survives(const QByteArray &token)
{
    if (token.size() <= 15)
        return !token.contains('e') && !token.contains('E');
    const QByteArray written =
        QJsonDocument(QJsonDocument::fromJson('[' + token + ']').array())
            .toJson(QJsonDocument::Compact);
    return written == '[' + token + ']';
}

// Recognises our own strings. Random, so that no text can hold it by design,
// spelled out or with escapes.
QByteArray newMark()
{
    return "@number-" + QUuid::createUuid().toByteArray(QUuid::Id128) + ':';
}

} // namespace

JsonDocument parseJson(const QByteArray &text)
{
    JsonDocument json;
    QByteArray guarded;
    int copied = 0;
    bool inString = false;
    for (int i = 0; i < text.size();) {
        const char c = text[i];
        if (inString) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inString = false;
            ++i;
        } else if (c == '"') {
            inString = true;
            ++i;
        } else if (c == '-' || (c >= '0' && c <= '9')) {
            int end = i;
            while (end < text.size() && isNumberByte(text[end]))
                ++end;
            const QByteArray token = text.mid(i, end - i);
            if (!survives(token) && isJsonNumber(token)) {
                if (json.numberMark.isEmpty())
                    json.numberMark = newMark();
                guarded += text.mid(copied, i - copied);
                guarded += '"' + json.numberMark + token + '"';
                copied = end;
            }
            i = end;
        } else {
            ++i;
        }
    }
    guarded += text.mid(copied);
    json.document = QJsonDocument::fromJson(guarded, &json.error);
    return json;
}

QByteArray toIndented(const JsonDocument &json)
{
    const QByteArray written = json.document.toJson(QJsonDocument::Indented);
    if (json.numberMark.isEmpty())
        return written;
    const QByteArray opening = '"' + json.numberMark;
    QByteArray result;
    int from = 0;
    for (int at; (at = written.indexOf(opening, from)) >= 0;) {
        const int number = at + opening.size();
        const int closing = written.indexOf('"', number);
        result += written.mid(from, at - from) + written.mid(number, closing - number);
        from = closing + 1;
    }
    return result + written.mid(from);
}
