#include "link/sys_manager.h"

#include "base/console.h"
#include "base/mutex.h"
#include "base/threads.h"
#include "link/command_dispatcher.h"
#include "link/command_protocol.h"
#include "link/ipc_sock.h"
#include "link/outbox.h"
#include "link/poller.h"

#include <QDebug>

#include <atomic>
#include <chrono>
#include <optional>
#include <thread>
#include <utility>

using namespace std::chrono_literals;

namespace {

// How long to wait before trying again what the system has no room for.
constexpr std::chrono::milliseconds retryInterval = 200ms;

// The error of a start that found no thread, as no error of a socket is.
constexpr int noThread = -1;

// What the product's link does when a restart is asked for, and whom it asks.
struct Handlers
{
    std::function<void()> restart;
    SysManager::LookForHolder lookForHolder;
    SysManager::LookForPeer lookForPeer;
};

struct KeptHandlers
{
    Mutex mutex;
    Handlers handlers GUARDED_BY(mutex);
};

KeptHandlers &kept()
{
    static KeptHandlers all;
    return all;
}

template <typename Handler>
void keep(Handler Handlers::*which, Handler handler)
{
    KeptHandlers &all = kept();
    const MutexLock lock(all.mutex);
    all.handlers.*which = std::move(handler);
}

Handlers copyOfHandlers()
{
    KeptHandlers &all = kept();
    const MutexLock lock(all.mutex);
    return all.handlers;
}

// Who the program at the other end is, and which client that is said of.
struct Peer
{
    quint64 client = 0;
    std::optional<ControlPort::Holder> program;
};

} // namespace

struct SysManager::Worker
{
    Worker(std::function<void()> restartSteamVR, int port)
        : poller(std::make_shared<Poller>()), socket(std::make_shared<IPCSock>(poller)),
          dispatcher({[this](const QString &text) { answer(text); }, std::move(restartSteamVR),
                      [this] { return stop.load(); }})
    {
        socket->setPort(port);
    }

    // 0, or the system's error.
    int start();
    void run();
    void processPass();
    void noticeClient();
    void learnWhoItIs();
    void sendPosted();
    void answer(const QString &text);
    bool echoAndPost(const QString &text);

    std::atomic<bool> stop{false};
    std::atomic<quint64> wakeUps{0};
    // Which client reported on the USB headset last, and which sent a list.
    std::atomic<quint64> usbReporter{0};
    std::atomic<quint64> listReporter{0};
    quint64 served = 0; // the client that the dispatcher hears
    std::thread thread;
    const std::shared_ptr<Poller> poller;
    const std::shared_ptr<IPCSock> socket;
    Outbox outbox;
    // Held while a text is echoed and posted, so that both orders are one.
    Mutex orderMutex;
    CommandDispatcher dispatcher;
    LookForPeer lookForPeer; // as start() left it
    mutable Mutex peerMutex;
    Peer peer GUARDED_BY(peerMutex);
};

int SysManager::Worker::start()
{
    if (thread.joinable())
        return 0;
    if (!outbox.open()) {
        const int error = socket_api::lastError();
        console::error(L"ControlSocket::Startup socket error : " + std::to_wstring(error));
        return error;
    }
    if (!socket->startup())
        return socket->startupError();
    poller->setWakeUp(outbox.wakeUpHandle());
    thread = threads::begin("the link to the streaming server", [this] { run(); });
    if (thread.joinable())
        return 0;
    // Whoever connected would wait for an answer.
    socket->close();
    return noThread;
}

void SysManager::Worker::run()
{
    while (!stop) {
        const bool paused = socket->isAcceptingPaused();
        const int result =
            poller->wait(Poller::Readable, paused ? std::optional(retryInterval) : std::nullopt);
        wakeUps.fetch_add(1, std::memory_order_relaxed);
        if (paused)
            socket->resumeAccepting();
        // A wait that fails does not sleep either.
        if (result == -1)
            outbox.waitWithoutSockets(retryInterval);
        if (result == -1 || poller->wokenUp())
            outbox.acknowledge();
        socket->continueSending();
        sendPosted();
        processPass();
    }
    sendPosted();
    socket->close();
    noticeClient();
}

void SysManager::Worker::processPass()
{
    socket->acceptClient();
    noticeClient();
    const quint64 client = socket->clientNumber();
    std::vector<std::string> lines;
    if (!socket->receiveLines(&lines)) {
        noticeClient();
        return;
    }
    learnWhoItIs();
    const CommandDispatcher::Reported reported = dispatcher.processBatch(lines);
    if (reported.usb)
        usbReporter = client;
    if (reported.list)
        listReporter = client;
}

// That another one is connected now, or none any more.
void SysManager::Worker::noticeClient()
{
    const quint64 client = socket->clientNumber();
    if (std::exchange(served, client) != client)
        dispatcher.nextClient();
}

// Of a client that says something: whoever only looks whether somebody listens is
// not worth the question.
void SysManager::Worker::learnWhoItIs()
{
    const quint64 client = socket->clientNumber();
    {
        const MutexLock lock(peerMutex);
        if (!lookForPeer || peer.client == client)
            return;
    }
    const std::optional<ControlPort::Holder> program = lookForPeer(socket->clientPort());
    const MutexLock lock(peerMutex);
    peer = {client, program};
}

void SysManager::Worker::sendPosted()
{
    for (const Outbox::Message &message : outbox.take()) {
        if (message.client == socket->clientNumber())
            socket->send(message.text.c_str());
    }
}

// On the worker thread: the answer is out before the next line is looked at.
void SysManager::Worker::answer(const QString &text)
{
    if (echoAndPost(text))
        sendPosted();
}

// Whether there is a client to send it to.
bool SysManager::Worker::echoAndPost(const QString &text)
{
    std::string narrow = text.toStdString();
    const MutexLock lock(orderMutex);
    console::echo("Send data exchange command response: " + narrow);
    const quint64 client = socket->clientNumber();
    if (client == 0)
        return false;
    outbox.post({client, std::move(narrow)});
    return true;
}

SysManager::SysManager(std::function<void()> restartSteamVR, int port)
    : worker_(std::make_unique<Worker>(std::move(restartSteamVR), port))
{
}

SysManager::~SysManager()
{
    if (!worker_->thread.joinable())
        return;
    worker_->stop = true;
    worker_->outbox.wakeWorker();
    worker_->thread.join();
}

SysManager &SysManager::instance()
{
    static SysManager &manager = []() -> SysManager & {
        const Handlers handlers = copyOfHandlers();
        static SysManager made(handlers.restart);
        if (!made.start(handlers.lookForHolder, handlers.lookForPeer)) {
            qWarning().nospace() << "port " << control_port::number
                                 << " cannot be listened on, error " << made.controlPort_.error;
        }
        qInfo("This is the construction of singleton");
        return made;
    }();
    return manager;
}

void SysManager::setRestartHandler(std::function<void()> restartSteamVR)
{
    keep(&Handlers::restart, std::move(restartSteamVR));
}

void SysManager::setLookForHolder(LookForHolder lookForHolder)
{
    keep(&Handlers::lookForHolder, std::move(lookForHolder));
}

void SysManager::setLookForPeer(LookForPeer lookForPeer)
{
    keep(&Handlers::lookForPeer, std::move(lookForPeer));
}

bool SysManager::start(const LookForHolder &lookForHolder, const LookForPeer &lookForPeer)
{
    worker_->lookForPeer = lookForPeer;
    if (lookForHolder)
        controlPort_.holder = lookForHolder();
    if (const auto &holder = controlPort_.holder) {
        qWarning().noquote().nospace() << "port " << control_port::number << " is held by "
                                       << holder->name << " (pid " << holder->pid << ")";
    }
    controlPort_.error = worker_->start();
    controlPort_.listening = controlPort_.error == 0;
    return controlPort_.listening;
}

void SysManager::linkTo(const QString &serial, const QString &address)
{
    if (!hasClient())
        return;
    qInfo().noquote() << "The command is LinkTo " + address + ' ' + serial;
    sendRaw(command_protocol::linkTo(serial, address));
}

void SysManager::disconnect(const QString &serial, const QString &address)
{
    if (!hasClient())
        return;
    qInfo().noquote() << "The command is Disconnect " + address + ' ' + serial;
    sendRaw(command_protocol::disconnect(serial, address));
}

void SysManager::requestHmdInfo()
{
    sendRaw(command_protocol::hmdInfoRequest());
}

void SysManager::sendWiredConnect(bool wired)
{
    qInfo().nospace() << "sendWiredConnnect:" << wired;
    sendRaw(command_protocol::connectionRequest(wired));
}

void SysManager::sendRaw(const QString &text)
{
    if (worker_->echoAndPost(text))
        worker_->outbox.wakeWorker();
}

void SysManager::setRegisterFirewallPending()
{
    worker_->dispatcher.setRegisterFirewallPending();
}

bool SysManager::isDeviceConnected() const
{
    return worker_->dispatcher.isDeviceConnected();
}

QString SysManager::deviceId() const
{
    return worker_->dispatcher.deviceId();
}

HeadsetList SysManager::hmdInfoList() const
{
    if (hasClient())
        return worker_->dispatcher.headsets();
    return {HeadsetRecord()};
}

bool SysManager::hasClient() const
{
    return worker_->socket->hasClient();
}

std::optional<ControlPort::Holder> SysManager::peer() const
{
    const quint64 client = worker_->socket->clientNumber();
    const MutexLock lock(worker_->peerMutex);
    return client != 0 && worker_->peer.client == client ? worker_->peer.program : std::nullopt;
}

bool SysManager::hasReported(bool wired) const
{
    const quint64 client = worker_->socket->clientNumber();
    return client != 0 && client == (wired ? worker_->usbReporter : worker_->listReporter);
}

quint64 SysManager::wakeUps() const
{
    return worker_->wakeUps.load(std::memory_order_relaxed);
}
