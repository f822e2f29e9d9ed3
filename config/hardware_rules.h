// Which hardware can stream, by lists of name fragments. The lists are kept by
// the vendor and change without a new version of this program.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>

namespace hardware_rules {

// The root object of "./compare.json", read anew with every call, so that a new
// download counts at once. Nothing when the file is missing or is not JSON;
// only the latter is logged.
std::optional<QJsonObject> read();
// The same for the content of such a file.
std::optional<QJsonObject> parse(const QByteArray &text);

// How well the two names do: 0, 1 or 4 for the processor, 0, 4 or 8 for the
// graphics card. A fragment matches a name that contains it, letter case
// included.
struct Score
{
    int processor = 0;
    int graphics = 0;
};
Score score(const QJsonObject &rules, const QString &cpuName, const QString &gpuName);

// Whether a matching fragment among the good cards names an RTX of the 40
// series or later. The number comes from the list, not from the card's name.
bool namesAv1Card(const QJsonObject &rules, const QString &gpuName);

// The sum of both by the rules of today; 0 without rules. Logs nothing; any
// thread.
int scoreSilently(const QString &cpuName, const QString &gpuName);

} // namespace hardware_rules
