#include "peers/adb_device_sim/transport.h"

#include "peers/adb_device_sim/stream.h"

#include <QTcpSocket>

#include <utility>

namespace {

constexpr quint32 version = 0x01000000;
constexpr quint32 longestPayload = 4096;
const QByteArray identity = QByteArrayLiteral(
    "device::ro.product.name=headset;ro.product.model=Headset;ro.product.device=headset;\0");

// The headset's programs listen on these.
bool isServed(const QString &service)
{
    return service == QLatin1String("tcp:9943") || service == QLatin1String("tcp:9944");
}

// With its length in front, in four hexadecimal digits.
QByteArray counted(const QByteArray &text)
{
    return QByteArray::number(text.size(), 16).rightJustified(4, '0') + text;
}

} // namespace

Transport::Transport(QTcpSocket *socket, Tell tell) : socket_(socket), tell_(std::move(tell))
{
    socket_->setParent(this);
    connect(socket_, &QTcpSocket::readyRead, this, &Transport::read);
    connect(socket_, &QTcpSocket::disconnected, this, &Transport::ended);
    connect(&reverses_, &Reverses::connected, this, &Transport::openOnPc);
}

Transport::~Transport()
{
    socket_->disconnect(this);
    for (auto &[id, stream] : streams_)
        stream->disconnect(this);
}

void Transport::read()
{
    reader_.add(socket_->readAll());
    while (const std::optional<Message> message = reader_.next())
        handle(*message);
    if (reader_.isBroken())
        socket_->abort();
}

void Transport::send(const Message &message)
{
    socket_->write(message.bytes());
}

void Transport::handle(const Message &message)
{
    if (message.command == Message::Connect) {
        tell_(QStringLiteral("connected"));
        send({Message::Connect, version, longestPayload, identity});
        return;
    }
    if (message.command == Message::Open) {
        open(message.first, QString::fromUtf8(message.payload.constData()));
        return;
    }
    const auto found = streams_.find(message.second);
    if (found == streams_.end())
        return;
    if (message.command == Message::Okay)
        found->second->onOkay(message.first);
    else if (message.command == Message::Write)
        found->second->onWrite(message.payload);
    else if (message.command == Message::Close)
        drop(message.second);
}

// It may be the one that is talking right now.
void Transport::drop(quint32 id)
{
    const auto found = streams_.find(id);
    if (found == streams_.end())
        return;
    found->second.release()->deleteLater();
    streams_.erase(found);
}

Stream *Transport::add()
{
    const quint32 id = ++lastId_;
    auto stream = std::make_unique<Stream>(
        id, [this](const Message &message) { send(message); }, nullptr);
    connect(stream.get(), &Stream::closed, this, &Transport::drop);
    return streams_.emplace(id, std::move(stream)).first->second.get();
}

void Transport::open(quint32 otherId, const QString &service)
{
    tell_(QStringLiteral("open ") + service);
    const std::optional<Answer> made = answer(service);
    if (!made) {
        send({Message::Close, 0, otherId, {}});
        return;
    }
    Stream *stream = add();
    send({Message::Okay, stream->id(), otherId, {}});
    stream->write(made->text);
    if (made->isAll)
        stream->close();
    stream->onOkay(otherId); // whoever opens is ready
}

std::optional<Transport::Answer> Transport::answer(const QString &service)
{
    const QString reversing = QStringLiteral("reverse:");
    if (isServed(service))
        return Answer{"HEADSET\n", false};
    if (service.startsWith(reversing))
        return Answer{reverse(service.mid(reversing.size())), true};
    return std::nullopt;
}

QByteArray Transport::reverse(const QString &request)
{
    if (request == QLatin1String("list-forward"))
        return counted(reverses_.list().toUtf8());
    if (request == QLatin1String("killforward-all")) {
        reverses_.removeAll();
        return "OKAY";
    }
    const QString kill = QStringLiteral("killforward:");
    if (request.startsWith(kill))
        return reverses_.remove(request.mid(kill.size())) ? "OKAY" : "FAIL" + counted("not there");
    // forward:[norebind:]OWN;PCS
    const QString pair = request.section(':', 1).remove(QStringLiteral("norebind:"));
    const QString own = pair.section(';', 0, 0);
    const QString problem = reverses_.add(own, pair.section(';', 1));
    if (!problem.isEmpty())
        return "FAIL" + counted(problem.toUtf8());
    return "OKAY" + counted(own.section(':', 1).toUtf8());
}

void Transport::openOnPc(QTcpSocket *socket, const QString &port)
{
    tell_(QStringLiteral("asks for ") + port);
    Stream *stream = add();
    stream->join(socket);
    send({Message::Open, stream->id(), 0, port.toUtf8() + '\0'});
}
