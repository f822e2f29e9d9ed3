#include "peers/streaming_server_sim/options.h"

#include <QCommandLineParser>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace {

const QString description = QStringLiteral(
    "Plays the streaming server for the streaming assistant: connects to its control port,\n"
    "again and again until it can, and speaks the command protocol as the server does.\n"
    "Times are in seconds from the start of this program and may have fractions.");

QCommandLineOption option(const char *name, const QString &text, const char *value = nullptr,
                          const QString &otherwise = QString())
{
    QCommandLineOption result(QString::fromLatin1(name), text);
    if (value)
        result.setValueName(QString::fromLatin1(value));
    if (!otherwise.isEmpty())
        result.setDefaultValue(otherwise);
    return result;
}

// Collects the first mistake.
class Reader
{
public:
    Reader(const QCommandLineParser &parser, QString *error) : parser_(parser), error_(error) {}

    void fail(const QString &name, const QString &what)
    {
        if (error_->isEmpty())
            *error_ = QStringLiteral("--%1 %2").arg(name, what);
    }
    double number(const QString &name, double least, double most)
    {
        return numberIn(name, parser_.value(name), least, most);
    }
    int milliseconds(const QString &name) { return millisecondsIn(name, parser_.value(name)); }
    int millisecondsIn(const QString &name, const QString &text)
    {
        return static_cast<int>(std::lround(numberIn(name, text, 0, 1e6) * 1000));
    }
    // WORD@SECONDS
    std::pair<QString, int> wordAt(const QString &name, const QString &text)
    {
        const int at = text.lastIndexOf('@');
        if (at <= 0) {
            fail(name, QStringLiteral("wants SERIAL@SECONDS, not \"%1\"").arg(text));
            return {};
        }
        return {text.left(at), millisecondsIn(name, text.mid(at + 1))};
    }

private:
    double numberIn(const QString &name, const QString &text, double least, double most)
    {
        bool ok = false;
        const double number = text.toDouble(&ok);
        if (ok && number >= least && number <= most)
            return number;
        fail(name, QStringLiteral("wants a number from %1 to %2, not \"%3\"")
                       .arg(least)
                       .arg(most, 0, 'f', 0)
                       .arg(text));
        return least;
    }

    const QCommandLineParser &parser_;
    QString *error_;
};

std::vector<HeadsetOption> readHeadsets(const QCommandLineParser &parser, Reader &reader)
{
    std::vector<HeadsetOption> headsets;
    for (const QString &text : parser.values(QStringLiteral("headset"))) {
        const QString name = QStringLiteral("headset");
        HeadsetOption headset;
        QString identity = text;
        if (text.contains('@'))
            std::tie(identity, headset.joins) = reader.wordAt(name, text);
        headset.serial = identity.section('=', 0, 0);
        headset.address = identity.section('=', 1);
        if (headset.serial.isEmpty() || headset.address.isEmpty())
            reader.fail(name, QStringLiteral("wants SERIAL=IP[@SECONDS], not \"%1\"").arg(text));
        headsets.push_back(headset);
    }
    for (const QString &name : {QStringLiteral("drop"), QStringLiteral("return")}) {
        for (const QString &text : parser.values(name)) {
            const auto [serial, at] = reader.wordAt(name, text);
            const auto headset = std::find_if(headsets.begin(), headsets.end(),
                                              [&, &wanted = serial](const HeadsetOption &known) {
                                                  return known.serial == wanted;
                                              });
            if (headset == headsets.end())
                reader.fail(name, QStringLiteral("names no --headset: \"%1\"").arg(text));
            else if (name == QStringLiteral("drop"))
                headset->drops.push_back(at);
            else
                headset->returns.push_back(at);
        }
    }
    return headsets;
}

} // namespace

Options Options::parse(const QStringList &arguments, QString *error, QString *help)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(description);
    const QCommandLineOption helpOption({QStringLiteral("h"), QStringLiteral("help")},
                                        QStringLiteral("Shows this."));
    parser.addOption(helpOption);
    parser.addOptions({
        option("port", "TCP port of the assistant on 127.0.0.1.", "PORT", "9932"),
        option("cell",
               "Sets the shared-memory cell to 1 at the start. Elsewhere than on Windows FILE is "
               "the cell of the simulated PC; on Windows it is any word. Without it the cell is "
               "left alone.",
               "FILE"),
        option("headset",
               "A headset on the network, from the start or from SECONDS on. Repeatable.",
               "SERIAL=IP[@SECONDS]"),
        option("link-delay", "From LinkTo until the headset is connected.", "SECONDS", "0.5"),
        option("drop", "The headset leaves the network. Repeatable.", "SERIAL@SECONDS"),
        option("return", "It is on the network again, unconnected. Repeatable.", "SERIAL@SECONDS"),
        option("restart-at", "Asks for a restart of SteamVR, once.", "SECONDS"),
        option("hello", "Greets with Hello on every connection."),
        option("usb", "Answers WiredConnect with true: a headset is on the cable."),
        option("usb-port", "Answers it with true while this port of the PC leads to a headset.",
               "port", "0"),
        option("serial-first", "The deviceId: item comes before the headsets, not after them."),
        option("device-id",
               "Reports SERIAL as the current headset, not the connected headset's own.", "SERIAL"),
        option("split", "Sends everything in pieces of BYTES.", "BYTES"),
        option("join", "Holds replies back until there are COUNT, and sends them at once.", "COUNT",
               "1"),
        option("speed", "Runs FACTOR times as fast.", "FACTOR", "1"),
        option("log",
               "Appends to FILE, or to the standard output for -, a line for everything sent (> ), "
               "received (< ) and done (# ).",
               "FILE"),
        option("exit-after-disconnect", "Ends when the connection ends."),
        option("give-up",
               "Ends after so long without a connection; 0: tries for ever. The exit code is 3 "
               "when there never was one.",
               "SECONDS", "30"),
    });

    error->clear();
    help->clear();
    Options options;
    if (!parser.parse(arguments)) {
        *error = parser.errorText();
        return options;
    }
    if (parser.isSet(helpOption)) {
        *help = parser.helpText();
        return options;
    }
    Reader reader(parser, error);
    if (!parser.positionalArguments().isEmpty())
        *error = QStringLiteral("no idea what to do with \"%1\"")
                     .arg(parser.positionalArguments().first());
    options.port = static_cast<quint16>(reader.number(QStringLiteral("port"), 1, 65535));
    options.cell = parser.value(QStringLiteral("cell"));
    options.headsets = readHeadsets(parser, reader);
    options.linkDelay = reader.milliseconds(QStringLiteral("link-delay"));
    if (parser.isSet(QStringLiteral("restart-at")))
        options.restartAt = reader.milliseconds(QStringLiteral("restart-at"));
    options.hello = parser.isSet(QStringLiteral("hello"));
    options.usb = parser.isSet(QStringLiteral("usb"));
    options.usbPort = static_cast<int>(reader.number(QStringLiteral("usb-port"), 0, 65535));
    options.serialFirst = parser.isSet(QStringLiteral("serial-first"));
    options.deviceId = parser.value(QStringLiteral("device-id"));
    if (parser.isSet(QStringLiteral("split")))
        options.split = static_cast<int>(reader.number(QStringLiteral("split"), 1, 1e6));
    options.join = static_cast<int>(reader.number(QStringLiteral("join"), 1, 1000));
    options.speed = reader.number(QStringLiteral("speed"), 0.01, 1000);
    options.log = parser.value(QStringLiteral("log"));
    options.exitAfterDisconnect = parser.isSet(QStringLiteral("exit-after-disconnect"));
    options.giveUp = reader.milliseconds(QStringLiteral("give-up"));
    return options;
}

int Options::real(int milliseconds) const
{
    return static_cast<int>(std::ceil(milliseconds / speed));
}
