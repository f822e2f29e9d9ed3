// cloud-sim: plays the vendor cloud; see peers/README.md.
#include "peers/cloud_sim/server.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <iostream>

namespace {

int complain(const QString &text)
{
    std::cerr << "cloud-sim: " << text.toStdString() << std::endl;
    return 2;
}

int list()
{
    for (const QString &name : answers::names())
        std::cout << name.toStdString() << ": " << answers::title(name).toStdString() << '\n';
    return 0;
}

bool writePort(const QString &path, quint16 port)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(QByteArray::number(port) + '\n') > 0 &&
           file.commit();
}

// The same cloud once more for each of the identities; their ports stand in `folder`.
// What went wrong, or nothing.
QString serveIdentities(const QString &folder, const Answers &answers, const QString &store)
{
    QString error;
    if (!QDir().mkpath(folder))
        return QStringLiteral("cannot make ") + folder;
    const QMap<QString, Identity> identities = makeIdentities(folder, &error);
    if (!error.isEmpty())
        return error;
    for (auto it = identities.begin(); it != identities.end(); ++it) {
        auto *const server = new Server(it.value(), answers, store);
        server->setParent(QCoreApplication::instance());
        if (!server->listen(QHostAddress::LocalHost) ||
            !writePort(folder + '/' + it.key() + ".port", server->serverPort()))
            return QStringLiteral("cannot listen as ") + it.key();
    }
    return {};
}

QCommandLineOption option(const char *name, const char *text, const char *value,
                          const char *otherwise = "")
{
    return {QString::fromLatin1(name), QString::fromLatin1(text), QString::fromLatin1(value),
            QString::fromLatin1(otherwise)};
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Plays the vendor cloud: HTTPS on 127.0.0.1 with a certificate of its own."));
    parser.addHelpOption();
    const QCommandLineOption port = option("port", "TCP port; 0 takes any.", "PORT", "18443");
    const QCommandLineOption portFile =
        option("port-file", "Writes the port into FILE when it can be reached.", "FILE");
    const QCommandLineOption store =
        option("store", "Keeps every request in DIR, as N.head and N.body.", "DIR");
    const QCommandLineOption answer =
        option("answers", "What it answers: a name of --list or a file.", "NAME", "normal");
    const QCommandLineOption table =
        option("table", "Answers with this requirements table.", "FILE");
    const QCommandLineOption listing(QStringLiteral("list"),
                                     QStringLiteral("Lists the compiled-in answers."));
    const QCommandLineOption identities = option(
        "identities", "Listens with good and bad certificates as well; see the README.", "DIR");
    parser.addOptions({port, portFile, store, answer, table, identities, listing});
    parser.process(app);
    if (parser.isSet(listing))
        return list();

    bool ok = false;
    const ushort number = parser.value(port).toUShort(&ok);
    if (!ok || !parser.positionalArguments().isEmpty())
        return complain(QStringLiteral("wanted: --port 0 to 65535, and no further words"));
    QString error;
    Answers answers = answers::load(parser.value(answer), &error);
    if (!error.isEmpty())
        return complain(error);
    if (parser.isSet(table)) {
        QFile file(parser.value(table));
        if (!file.open(QIODevice::ReadOnly))
            return complain(QStringLiteral("cannot read ") + file.fileName());
        Answer whole;
        whole.body = file.readAll();
        answers[QStringLiteral("table")] = {whole};
    }
    if (parser.isSet(identities))
        error = serveIdentities(parser.value(identities), answers, parser.value(store));
    if (!error.isEmpty())
        return complain(error);
    const Identity identity = makeIdentity(&error);
    if (!error.isEmpty())
        return complain(error);

    Server server(identity, answers, parser.value(store));
    if (!server.listen(QHostAddress::LocalHost, number))
        return complain(
            QStringLiteral("cannot listen on port %1: %2").arg(number).arg(server.errorString()));
    std::cout << "https://127.0.0.1:" << server.serverPort() << std::endl;
    if (parser.isSet(portFile) && !writePort(parser.value(portFile), server.serverPort()))
        return complain(QStringLiteral("cannot write ") + parser.value(portFile));
    return QCoreApplication::exec();
}
