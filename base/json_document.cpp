#include "base/json_document.h"

#include <QUuid>

#include <algorithm>

namespace {

// Every decimal number of so many digits comes back unchanged from a double.
constexpr int kSafeDigits = 15;
// Well inside the range of a double, away from the subnormal numbers.
constexpr int kSafeExponent = 290;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isNumberByte(char c)
{
    return isDigit(c) || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

const char *skipDigits(const char *at, const char *end)
{
    return std::find_if_not(at, end, isDigit);
}

// Whether the bytes are a number by the grammar of JSON: only then may they be
// hidden from the parser, which would complain about anything else.
bool isJsonNumber(const char *at, const char *end)
{
    if (at != end && *at == '-')
        ++at;
    const char *whole = at;
    at = skipDigits(at, end);
    if (at == whole || (*whole == '0' && at - whole > 1))
        return false;
    if (at != end && *at == '.') {
        const char *fraction = ++at;
        at = skipDigits(at, end);
        if (at == fraction)
            return false;
    }
    if (at != end && (*at == 'e' || *at == 'E')) {
        ++at;
        if (at != end && (*at == '-' || *at == '+'))
            ++at;
        const char *exponent = at;
        at = skipDigits(at, end);
        if (at == exponent)
            return false;
    }
    return at == end;
}

// Whether a double gives the value of this JSON number back.
bool fitsDouble(const char *at, const char *end)
{
    qint64 digits = 0;     // seen so far, leading zeros included
    qint64 first = -1;     // index of the first digit that is not 0
    qint64 last = -1;      // and of the last one
    qint64 wholeSize = -1; // digits before the point
    for (; at != end && *at != 'e' && *at != 'E'; ++at) {
        if (*at == '.') {
            wholeSize = digits;
        } else if (isDigit(*at)) {
            if (*at != '0') {
                first = first < 0 ? digits : first;
                last = digits;
            }
            ++digits;
        }
    }
    if (wholeSize < 0)
        wholeSize = digits;
    qint64 exponent = 0;
    bool negative = false;
    for (; at != end; ++at) {
        if (*at == '-')
            negative = true;
        else if (isDigit(*at))
            exponent = std::min<qint64>(exponent * 10 + (*at - '0'), 1000000000);
    }
    if (negative)
        exponent = -exponent;
    if (first >= 0)
        exponent += wholeSize - 1 - first;
    return last - first < kSafeDigits && exponent >= -kSafeExponent && exponent <= kSafeExponent;
}

// Recognises our own strings. Random, so that no text can hold it by design,
// spelled out or with escapes.
QByteArray newMark()
{
    return "@number-" + QUuid::createUuid().toByteArray(QUuid::Id128) + ':';
}

// `at` is the opening quote.
const char *endOfString(const char *at, const char *end)
{
    for (++at; at < end && *at != '"'; ++at) {
        if (*at == '\\' && end - at > 1)
            ++at;
    }
    return at < end ? at + 1 : end;
}

} // namespace

QString JsonDocument::text(const QJsonValue &value) const
{
    const QString string = value.toString();
    const bool kept = !numberMark.isEmpty() && string.startsWith(QLatin1String(numberMark));
    return kept ? QString() : string;
}

JsonDocument parseJson(const QByteArray &text)
{
    JsonDocument json;
    QByteArray guarded;
    const char *const end = text.constData() + text.size();
    const char *copied = text.constData();
    for (const char *at = copied; at < end;) {
        if (*at == '"') {
            at = endOfString(at, end);
        } else if (isDigit(*at) || *at == '-' || *at == '+' || *at == '.') {
            const char *const number = at;
            at = std::find_if_not(at, end, isNumberByte);
            if (!isJsonNumber(number, at) || fitsDouble(number, at))
                continue;
            // As a name a number is an error, which a string would cover up.
            const char *const next = std::find_if_not(at, end, isBlank);
            if (next != end && *next == ':')
                continue;
            if (json.numberMark.isEmpty())
                json.numberMark = newMark();
            guarded.append(copied, static_cast<int>(number - copied));
            guarded.append('"').append(json.numberMark);
            guarded.append(number, static_cast<int>(at - number)).append('"');
            copied = at;
        } else {
            ++at;
        }
    }
    if (!json.numberMark.isEmpty()) {
        guarded.append(copied, static_cast<int>(end - copied));
        json.document = QJsonDocument::fromJson(guarded, &json.error);
        if (json.ok())
            return json;
        // The error is to speak of the text as it is.
        json.numberMark.clear();
    }
    json.document = QJsonDocument::fromJson(text, &json.error);
    return json;
}

QByteArray toIndented(const JsonDocument &json)
{
    const QByteArray written = json.document.toJson(QJsonDocument::Indented);
    if (json.numberMark.isEmpty())
        return written;
    const QByteArray opening = '"' + json.numberMark;
    QByteArray result;
    result.reserve(written.size());
    int from = 0;
    for (int at; (at = written.indexOf(opening, from)) >= 0;) {
        const int number = at + opening.size();
        const int closing = written.indexOf('"', number);
        result.append(written.constData() + from, at - from);
        result.append(written.constData() + number, closing - number);
        from = closing + 1;
    }
    return result.append(written.constData() + from, written.size() - from);
}
