// streaming-server-sim: plays the streaming server; see peers/README.md.
#include "peers/streaming_server_sim/cell.h"
#include "peers/streaming_server_sim/options.h"
#include "peers/streaming_server_sim/record.h"
#include "peers/streaming_server_sim/server.h"
#include "peers/streaming_server_sim/stop_signal.h"

#include <QCoreApplication>
#include <QTimer>

#include <iostream>
#include <optional>

namespace {

int complain(const QString &text)
{
    std::cerr << "streaming-server-sim: " << text.toStdString() << std::endl;
    return 2;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    quitOnStopRequest();
    QString error;
    QString help;
    const Options options = Options::parse(QCoreApplication::arguments(), &error, &help);
    if (!error.isEmpty())
        return complain(error);
    if (!help.isEmpty()) {
        std::cout << help.toStdString();
        return 0;
    }
    Record record(options.log);
    if (!record.isOpen())
        return complain(QStringLiteral("cannot write ") + options.log);

    std::optional<Cell> cell;
    if (!options.cell.isEmpty()) {
        cell.emplace(options.cell.toStdString());
        if (!cell->sayUp())
            return complain(QStringLiteral("cannot set the cell ") + options.cell);
        record.did(QStringLiteral("the cell says 1"));
    }
    Server server(options, record);
    QObject::connect(&server, &Server::finished, &app,
                     [](int code) { QCoreApplication::exit(code); });
    QTimer::singleShot(0, &server, &Server::start);
    const int code = QCoreApplication::exec();
    record.did(QStringLiteral("ends"));
    return code;
}
