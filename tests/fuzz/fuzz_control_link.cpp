// Arbitrary bytes in arbitrary chunks, through the line splitter into the
// dispatcher, and beside it the same done in the plainest possible way: both
// have to agree after every chunk.
#include "link/command_dispatcher.h"
#include "link/line_splitter.h"
#include "tests/fuzz/require.h"

#include <QStringList>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace {

// What the outside sees of a link.
struct Seen
{
    QStringList sent;
    int restarts = 0;
};

// The plain way: slow, but obvious.
class Model
{
public:
    std::vector<std::string> append(std::string chunk)
    {
        buffer_ += chunk.substr(0, chunk.find('\0'));
        std::vector<std::string> lines;
        for (std::size_t feed; (feed = buffer_.find('\n')) != std::string::npos;) {
            lines.push_back(buffer_.substr(0, feed));
            buffer_.erase(0, feed + 1);
        }
        return lines;
    }

    void process(const std::vector<std::string> &lines)
    {
        if (lines.empty())
            return;
        bool reported = false;
        bool restarted = false; // once for all that came together
        for (const std::string &line : lines) {
            const std::size_t tab = line.find('\t');
            const std::string command = line.substr(0, tab);
            const std::string argument = tab == std::string::npos ? "" : line.substr(tab + 1);
            if (command == "DeviceConnectBack") {
                connected = argument.find("true") != std::string::npos;
            } else if (command == "HMDINFOBACK") {
                reported = true;
                idleBatches_ = 0;
                report(QString::fromStdString(argument));
            } else if (command == "RESTARTSTEAMVR") {
                restarted = true;
            } else if (command == "Hello") {
                seen.sent << "HHHH, You can see me!\n";
            }
        }
        seen.restarts += restarted;
        if (!reported && ++idleBatches_ == 10) {
            idleBatches_ = 0;
            headsets.clear();
        }
    }

    std::size_t unfinished() const { return buffer_.size(); }
    void clear() { buffer_.clear(); }

    Seen seen;
    bool connected = false;
    bool firewallPending = false;
    QString deviceId;
    HeadsetList headsets;

private:
    void report(const QString &argument)
    {
        headsets.clear();
        for (QString part : argument.split('~')) {
            if (part.contains("deviceId:")) {
                part.remove("deviceId:");
                if (!part.isEmpty())
                    deviceId = part;
                continue;
            }
            const QStringList fields = part.split(';');
            if (fields.size() == 4)
                headsets.append({fields[0], fields[1], fields[2].toLower() != "false"});
        }
        if (firewallPending)
            seen.sent << "RegisterFireWall";
        firewallPending = false;
    }

    std::string buffer_;
    int idleBatches_ = 0;
};

void ignoreLog(QtMsgType, const QMessageLogContext &, const QString &) {}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    qInstallMessageHandler(ignoreLog);
    return 0;
}

// Each chunk is preceded by a byte: its length, or for the two highest values a
// request of the program and a new client.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr std::size_t limit = 100;
    constexpr std::uint8_t newClient = 255;
    constexpr std::uint8_t firewall = 254;

    Seen seen;
    CommandDispatcher dispatcher(
        {[&seen](const QString &text) { seen.sent << text; }, [&seen] { ++seen.restarts; }});
    LineSplitter splitter(limit);
    Model model;

    while (size > 0) {
        const std::uint8_t kind = *data++;
        --size;
        if (kind == newClient) {
            splitter.clear();
            model.clear();
            continue;
        }
        if (kind == firewall) {
            dispatcher.setRegisterFirewallPending();
            model.firewallPending = true;
            continue;
        }
        const std::size_t length = std::min<std::size_t>(kind, size);
        const std::string chunk(reinterpret_cast<const char *>(data), length);
        data += length;
        size -= length;

        std::vector<std::string> lines;
        const bool bounded = splitter.append(chunk.data(), chunk.size(), &lines);
        REQUIRE(lines == model.append(chunk));
        REQUIRE(splitter.unfinished() == model.unfinished());
        REQUIRE(bounded == (splitter.unfinished() <= limit));
        REQUIRE(splitter.unfinished() <= limit + 255);
        if (!bounded) {
            splitter.clear();
            model.clear();
        }

        dispatcher.processBatch(lines);
        model.process(lines);
        REQUIRE(seen.sent == model.seen.sent);
        REQUIRE(seen.restarts == model.seen.restarts);
        REQUIRE(dispatcher.isDeviceConnected() == model.connected);
        REQUIRE(dispatcher.deviceId() == model.deviceId);
        REQUIRE(dispatcher.headsets() == model.headsets);
    }
    return 0;
}
