#include "peers/cloud_sim/server.h"

#include "peers/cloud_sim/sending.h"

#include <QSslSocket>

#include <algorithm>
#include <iostream>
#include <memory>

namespace {

QString serviceOf(const QByteArray &path)
{
    if (path == "/orbresource/pc_compare.json")
        return QStringLiteral("table");
    if (path == "/vrmcsys/appstore/getAlvrVerInfo")
        return QStringLiteral("version");
    if (path == "/vrmcsys/datacenter/streaming_data_upload")
        return QStringLiteral("events");
    if (path == "/vrmcsys/fileserver/Stiosko/upload")
        return QStringLiteral("upload");
    if (path.startsWith("/download/"))
        return QStringLiteral("installer");
    return {};
}

bool isTag(const QByteArray &word)
{
    return !word.isEmpty() && std::all_of(word.begin(), word.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
               c == '-' || c == '_';
    });
}

// "/@TAG/path" belongs to a tag of its own.
QByteArray tagOf(const QByteArray &target)
{
    const int end = target.indexOf('/', 1);
    const QByteArray word = target.startsWith("/@") ? target.mid(2, end - 2) : QByteArray();
    return end > 0 && isTag(word) ? word : QByteArray();
}

} // namespace

Server::Server(const Identity &identity, const Answers &answers, const QString &store)
    : identity_(identity), answers_(answers), store_(store)
{
}

void Server::incomingConnection(qintptr handle)
{
    auto *const socket = new QSslSocket(this);
    if (!socket->setSocketDescriptor(handle)) {
        delete socket;
        return;
    }
    socket->setLocalCertificateChain(identity_.chain);
    socket->setPrivateKey(identity_.key);
    socket->setPeerVerifyMode(QSslSocket::VerifyNone);
    const auto bytes = std::make_shared<QByteArray>();
    connect(socket, &QSslSocket::readyRead, this,
            [this, socket, bytes] { read(socket, bytes.get()); });
    connect(socket, &QSslSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, qOverload<QAbstractSocket::SocketError>(&QAbstractSocket::errorOccurred),
            socket, [socket] {
                if (socket->state() == QAbstractSocket::UnconnectedState)
                    socket->deleteLater();
            });
    socket->startServerEncryption();
}

// One request after the other: the next one waits in `bytes` for its answer.
void Server::read(QSslSocket *socket, QByteArray *bytes)
{
    bytes->append(socket->readAll());
    if (socket->findChild<Sending *>())
        return;
    bool isBad = false;
    const std::optional<Request> request = takeRequest(bytes, &isBad);
    if (isBad)
        socket->disconnectFromHost();
    else if (request)
        answer(socket, bytes, *request);
}

void Server::answer(QSslSocket *socket, QByteArray *bytes, const Request &request)
{
    const Answer answer = answerTo(request);
    auto *const sending = new Sending(answer, socket, socket);
    if (answer.silent)
        return;
    connect(sending, &Sending::finished, this, [this, socket, bytes, sending](bool keep) {
        sending->setParent(nullptr);
        sending->deleteLater();
        if (keep)
            read(socket, bytes);
        else
            socket->disconnectFromHost();
    });
    sending->start();
}

Answer Server::answerTo(const Request &request)
{
    const QByteArray tag = tagOf(request.target);
    const QString name = QString::fromLatin1(tag);
    const QByteArray path = tag.isEmpty() ? request.target : request.target.mid(tag.size() + 2);
    store_.add(name, request);
    std::cout << request.method.toStdString() << ' ' << request.target.toStdString() << std::endl;

    Answers all = answers_;
    const QString own = store_.answersFile(name);
    QString error;
    if (!own.isEmpty())
        all = answers::load(own, &error);
    if (!error.isEmpty())
        std::cerr << "cloud-sim: " << error.toStdString() << std::endl;
    const QString service = serviceOf(path.split('?').first());
    const QList<Answer> list = all.value(service);
    if (list.isEmpty()) {
        Answer unknown;
        unknown.status = 404;
        return unknown;
    }
    Answer answer = list[std::min(asked_[name + '/' + service]++, list.size() - 1)];
    const QByteArray base = "https://" + request.header("Host") +
                            (tag.isEmpty() ? QByteArray() : QByteArray("/@" + tag));
    answer.body.replace("{base}", base);
    answer.body.replace("{version}", KOLM_VERSION);
    return answer;
}
