#include "usb/adb_rules.h"

#include <QRegularExpression>

#include <algorithm>

namespace adb_rules {

namespace {

constexpr unsigned int retryLimit = 3;

const QString listHeader = QStringLiteral("List of devices attached\r\n");
const QString lineEnd = QStringLiteral("\r\n");
const QString deviceEnd = QStringLiteral("\tdevice\r\n\r\n");
const QString programName = QStringLiteral("adb.exe");

Answer deviceAnswer(AdbState now, const QString &text)
{
    if (text.contains(QLatin1String("offline")) || text.contains(QLatin1String("connecting")))
        return {now, Answer::RestartAdb};
    if (!text.contains(listHeader)) {
        if (text != lineEnd)
            return {now, Answer::Nothing};
        now.state = Forwarding;
        return {now, Answer::SetUpPorts};
    }
    if (text == listHeader + lineEnd) {
        if (now.serial.isEmpty())
            return {now, Answer::Nothing};
        now.serial.clear();
        return {now, Answer::ReportGone};
    }
    QString serial = text;
    serial.remove(deviceEnd).remove(listHeader);
    if (serial == now.serial)
        return {now, Answer::Nothing};
    now.serial = serial;
    return {now, Answer::ReportHeadset};
}

} // namespace

Check check(AdbState now)
{
    Check result;
    if (now.state == AwaitingVersion) {
        if (now.grace == Running)
            return {now};
        if (now.grace == NotGiven) {
            now.grace = Running;
            return {now, Check::GiveGrace};
        }
        now.mode = Shipped;
        now.state = Idle;
        result.useShipped = true;
    }
    if (now.state == Idle) {
        now.state = AwaitingDevices;
        result.action = Check::AskForDevices;
    } else if (now.state == Forwarding) {
        now.state = Idle;
    } else if (now.state == AwaitingDevices) {
        ++now.retries;
    }
    if (now.retries >= retryLimit) {
        now.retries = 0;
        now.state = Idle;
        result.giveUp = true;
    }
    result.next = now;
    return result;
}

Answer answer(AdbState now, const QString &text)
{
    if (now.state == AwaitingVersion) {
        now.mode = OnSearchPath;
        now.state = Idle;
        return {now, Answer::UseLocal};
    }
    if (now.state == AwaitingDevices)
        return deviceAnswer(now, text);
    return {now, Answer::Nothing};
}

QStringList foreignForwards(const QString &text)
{
    static const QRegularExpression forward(
        QStringLiteral("^(\\S+) ((?:tcp|local\\w*|dev|jdwp):\\S+) (\\w+:\\S+)\\r?$"),
        QRegularExpression::MultilineOption);
    QStringList found;
    auto matches = forward.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QString local = match.captured(2);
        const bool isOurs = local == match.captured(3) && (local == QLatin1String("tcp:9943") ||
                                                           local == QLatin1String("tcp:9944"));
        if (!isOurs)
            found.append(match.captured(1) + ' ' + local + ' ' + match.captured(3));
    }
    return found;
}

bool isWord(const QString &path)
{
    const QString breaks = QStringLiteral(" ,;=%()");
    return std::none_of(path.begin(), path.end(), [&](QChar c) { return breaks.contains(c); });
}

QString commandLine(const QString &command, int mode, const QString &path)
{
    // Without a path (the system may refuse to tell that of a running adb) the
    // name is all there is.
    if (mode == OnSearchPath || path.isEmpty() || !isWord(path))
        return command;
    QString line = command;
    return line.replace(QLatin1String("adb"), path);
}

QString workingFolder(const QString &path)
{
    return isWord(path) ? QString() : QString(path).remove(programName);
}

} // namespace adb_rules
