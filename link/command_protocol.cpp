#include "link/command_protocol.h"

#include <QStringView>

#include <array>

namespace command_protocol {

namespace {

constexpr int fieldCount = 4;

// Calls `action` with every part of `text` between separators, empty parts
// included.
template <typename Action>
void forEachPart(QStringView text, QChar separator, Action action)
{
    for (;;) {
        const auto at = text.indexOf(separator);
        if (at < 0)
            break;
        action(text.left(at));
        text = text.mid(at + 1);
    }
    action(text);
}

// `text` without any `word`, in one pass: taking the words out one by one is
// quadratic.
QString without(QStringView text, QStringView word)
{
    QString rest;
    rest.reserve(static_cast<int>(text.size()));
    for (;;) {
        const auto at = text.indexOf(word);
        if (at < 0)
            break;
        rest.append(text.data(), static_cast<int>(at));
        text = text.mid(at + word.size());
    }
    rest.append(text.data(), static_cast<int>(text.size()));
    return rest;
}

HmdInfoBack parseHmdInfo(const QString &argument)
{
    const QString deviceIdWord = QStringLiteral("deviceId:");
    HmdInfoBack info;
    forEachPart(argument, QLatin1Char('~'), [&](QStringView part) {
        if (part.contains(deviceIdWord)) {
            const QString rest = without(part, deviceIdWord);
            if (!rest.isEmpty())
                info.deviceId = rest;
            return;
        }
        std::array<QStringView, fieldCount> fields;
        std::size_t count = 0;
        forEachPart(part, QLatin1Char(';'), [&](QStringView field) {
            if (count < fields.size())
                fields[count] = field;
            ++count;
        });
        if (count != fields.size())
            return;
        const bool connected = fields[2].compare(QStringLiteral("false"), Qt::CaseInsensitive) != 0;
        info.headsets.append({fields[0].toString(), fields[1].toString(), connected});
    });
    return info;
}

} // namespace

Line splitLine(std::string_view line)
{
    const std::size_t tab = line.find('\t');
    if (tab == std::string_view::npos)
        return {line, {}};
    return {line.substr(0, tab), line.substr(tab + 1)};
}

QString toText(std::string_view bytes)
{
    return QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()));
}

Command parse(const Line &line)
{
    if (line.name == "DeviceConnectBack")
        return DeviceConnectBack{line.argument.find("true") != std::string_view::npos};
    if (line.name == "HMDINFOBACK")
        return parseHmdInfo(toText(line.argument));
    if (line.name == "RESTARTSTEAMVR")
        return RestartSteamVR();
    if (line.name == "Hello")
        return Hello();
    return Unknown();
}

QString linkTo(const QString &serial, const QString &address)
{
    return QStringLiteral("LinkTo %1 %2 ").arg(serial, address);
}

QString disconnect(const QString &serial, const QString &address)
{
    return QStringLiteral("Disconnect %1 %2 ").arg(serial, address);
}

QString hmdInfoRequest()
{
    return QStringLiteral("HMDInfoRequest");
}

QString connectionRequest(bool wired)
{
    return wired ? QStringLiteral("WiredConnect") : QStringLiteral("WirelessConnect");
}

QString registerFirewall()
{
    return QStringLiteral("RegisterFireWall");
}

QString helloReply()
{
    return QStringLiteral("HHHH, You can see me!\n");
}

} // namespace command_protocol
