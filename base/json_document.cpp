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

// A text with some of its parts replaced.
class Rewriter
{
public:
    explicit Rewriter(const QByteArray &text) : copied_(text.constData()) {}

    void replace(const char *from, const char *to, const QByteArray &by)
    {
        result_.append(copied_, static_cast<int>(from - copied_)).append(by);
        copied_ = to;
        changed_ = true;
    }
    bool changed() const { return changed_; }
    QByteArray upTo(const char *end)
    {
        result_.append(copied_, static_cast<int>(end - copied_));
        copied_ = end;
        return result_;
    }

private:
    QByteArray result_;
    const char *copied_;
    bool changed_ = false;
};

// Spells out what Qt does not keep in a string: a byte order mark at its
// beginning, and null bytes, which are no JSON but pass, and behind which Qt
// does not tell one name from another. `at` is the opening quote; the result
// is behind the closing one.
const char *rewriteString(const char *at, const char *end, Rewriter &rewriter)
{
    ++at;
    if (end - at >= 3 && at[0] == '\xef' && at[1] == '\xbb' && at[2] == '\xbf') {
        rewriter.replace(at, at + 3, "\\ufeff");
        at += 3;
    }
    for (; at < end && *at != '"'; ++at) {
        if (*at == '\\' && end - at > 1)
            ++at;
        else if (*at == '\0')
            rewriter.replace(at, at + 1, "\\u0000");
    }
    return at < end ? at + 1 : end;
}

// Hides the number at `at` from the parser if it would not survive it. The
// result is behind the number.
const char *rewriteNumber(const char *at, const char *end, Rewriter &rewriter, QByteArray *mark)
{
    const char *const number = at;
    at = std::find_if_not(at, end, isNumberByte);
    if (!isJsonNumber(number, at) || fitsDouble(number, at))
        return at;
    // As a name a number is an error, which a string would cover up.
    const char *const next = std::find_if_not(at, end, isBlank);
    if (next != end && *next == ':')
        return at;
    if (mark->isEmpty())
        *mark = newMark();
    const QByteArray digits = QByteArray::fromRawData(number, static_cast<int>(at - number));
    rewriter.replace(number, at, '"' + *mark + digits + '"');
    return at;
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
    Rewriter rewriter(text);
    const char *const end = text.constData() + text.size();
    for (const char *at = text.constData(); at < end;) {
        if (*at == '"')
            at = rewriteString(at, end, rewriter);
        else if (isDigit(*at) || *at == '-' || *at == '+' || *at == '.')
            at = rewriteNumber(at, end, rewriter, &json.numberMark);
        else
            ++at;
    }
    if (rewriter.changed()) {
        json.document = QJsonDocument::fromJson(rewriter.upTo(end), &json.error);
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
