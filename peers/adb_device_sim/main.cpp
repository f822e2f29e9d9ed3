#include "peers/adb_device_sim/device.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

namespace {

const QString description = QStringLiteral(
    "Plays the headset's side of adb over TCP: \"adb connect 127.0.0.1:PORT\" makes it a device.");

void say(const QString &line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(description);
    parser.addHelpOption();
    const QCommandLineOption port(QStringLiteral("port"),
                                  QStringLiteral("Port of 127.0.0.1; 0 chooses one."),
                                  QStringLiteral("port"), QStringLiteral("0"));
    parser.addOption(port);
    parser.process(app);
    Device device(say);
    const QString problem = device.listen(parser.value(port).toUShort());
    if (!problem.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(problem));
        return 1;
    }
    say(QStringLiteral("listening on %1").arg(device.port()));
    return QCoreApplication::exec();
}
