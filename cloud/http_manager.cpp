#include "cloud/http_manager.h"

#include "base/clock.h"
#include "base/file_io.h"
#include "cloud/cloud_host.h"
#include "cloud/network.h"
#include "sysinfo/system_info.h"

#include <QDebug>
#include <QEventLoop>
#include <QFile>
#include <QHttpMultiPart>
#include <QJsonDocument>
#include <QNetworkReply>
#include <QPointer>

#include <memory>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds sendInterval = 10min;
// A server that does not answer must not keep the program from closing.
constexpr std::chrono::milliseconds flushLimit = 2s;
// Long enough for a slow line; then the request makes room.
constexpr std::chrono::milliseconds answerLimit = 5min;

const QString eventPath = QStringLiteral("/vrmcsys/datacenter/streaming_data_upload");
const QString uploadPath = QStringLiteral("/vrmcsys/fileserver/Stiosko/upload");
const QString errCode = QStringLiteral("errCode");

QString compact(const QJsonObject &object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

QHttpPart filePart(const QByteArray &content)
{
    QHttpPart part;
    part.setHeader(QNetworkRequest::ContentDispositionHeader,
                   QStringLiteral("form-data;name=\"file\";filename=\".json\""));
    part.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("multipart/form-data;"));
    part.setBody(content);
    return part;
}

QHttpPart namePart(const QString &fileName)
{
    QHttpPart part;
    part.setHeader(QNetworkRequest::ContentDispositionHeader,
                   QStringLiteral("form-data;name=\"fileName\""));
    part.setBody(fileName.toUtf8());
    return part;
}

} // namespace

HttpManager::HttpManager(Dependencies dependencies, QObject *parent)
    : QObject(parent), dependencies_(std::move(dependencies)),
      networkManager_(new cloud::Network(this)),
      proxies_(*networkManager_, dependencies_.askForProxies)
{
    dependencies_.clock.startTimer(sendInterval, this);
}

HttpManager &HttpManager::instance()
{
    static HttpManager manager([] {
        Dependencies dependencies{Clock::system()};
        dependencies.describePc = [] { return SystemInfo::instance().toJson(); };
        if (!cloud::host().isEmpty())
            dependencies.baseAddress = QStringLiteral("https://") + cloud::host();
        dependencies.peerCheck = cloud::builtPeerCheck();
        dependencies.askForProxies = &ProxyFinder::askSystem;
        return dependencies;
    }());
    return manager;
}

void HttpManager::addEvent(const QString &eventId, const QJsonObject &extraData)
{
    if (dependencies_.baseAddress.isEmpty())
        return;
    const QJsonObject record{{QStringLiteral("timestamp"), dependencies_.clock.epochMilliseconds()},
                             {QStringLiteral("defaultData"), dependencies_.describePc()},
                             {QStringLiteral("eventId"), eventId},
                             {QStringLiteral("extraData"), extraData}};
    QByteArray text = QJsonDocument(record).toJson(QJsonDocument::Compact);
    const MutexLock lock(queueMutex_);
    pendingEvents_.push_back(std::move(text));
}

void HttpManager::forgetEvents()
{
    const MutexLock lock(queueMutex_);
    pendingEvents_.clear();
}

// The queue as a JSON array; empty when there is nothing to send.
QByteArray HttpManager::takeBatch()
{
    std::vector<QByteArray> events;
    {
        const MutexLock lock(queueMutex_);
        events.swap(pendingEvents_);
    }
    if (events.empty())
        return {};
    int size = 1;
    for (const QByteArray &event : events)
        size += event.size() + 1;
    QByteArray batch;
    batch.reserve(size);
    for (const QByteArray &event : events)
        batch.append(batch.isEmpty() ? '[' : ',').append(event);
    return batch.append(']');
}

void HttpManager::sendEvents(bool asynchronous)
{
    const QByteArray batch = takeBatch();
    if (batch.isEmpty())
        return;
    const QUrl url(dependencies_.baseAddress + eventPath);
    if (asynchronous)
        sendInBackground(url, batch);
    else
        sendAndWait(url, batch);
}

QNetworkReply *HttpManager::post(const QUrl &url, const QByteArray &batch)
{
    QNetworkRequest request = cloud::request(url, dependencies_.peerCheck);
    request.setHeader(QNetworkRequest::ContentTypeHeader,
                      QStringLiteral("application/json;charset=UTF-8"));
    return networkManager_->post(request, batch);
}

void HttpManager::sendInBackground(const QUrl &url, const QByteArray &batch)
{
    proxies_.find(url, this, [this, url, batch] {
        QNetworkReply *const reply = post(url, batch);
        const auto body = cloud::collectBody(reply);
        abortAfter(answerLimit, reply);
        connect(reply, &QNetworkReply::finished, this, [this, reply, body, batch] {
            handleBatchAnswer(*body, batch);
            reply->deleteLater();
        });
    });
}

void HttpManager::sendAndWait(const QUrl &url, const QByteArray &batch)
{
    QEventLoop loop;
    // Whatever ends the program meanwhile may take both away.
    const QPointer<HttpManager> self = this;
    QPointer<QNetworkReply> reply; // none until it is known how the cloud is reached
    std::shared_ptr<const QByteArray> body;
    dependencies_.clock.singleShot(flushLimit, &loop, [&] { loop.quit(); });
    proxies_.find(url, &loop, [&] {
        reply = post(url, batch);
        body = cloud::collectBody(reply);
        connect(reply, SIGNAL(finished()), &loop, SLOT(quit()));
        connect(reply, SIGNAL(destroyed()), &loop, SLOT(quit()));
    });
    connect(this, SIGNAL(destroyed()), &loop, SLOT(quit()));
    loop.exec();
    // The loop ends early when time is up, or the whole program is told to end.
    if (!self)
        return;
    if (!reply) {
        handleBatchAnswer({}, batch);
        return;
    }
    reply->abort();
    handleBatchAnswer(*body, batch);
    reply->deleteLater();
}

void HttpManager::handleBatchAnswer(const QByteArray &body, const QByteArray &batch)
{
    QJsonParseError error = {};
    const QJsonDocument document = QJsonDocument::fromJson(body, &error);
    if (error.error != QJsonParseError::NoError) {
        qCritical().noquote().nospace()
            << "error evnetid: " << QString::fromUtf8(batch) << " json parse fail";
    } else if (document.object().value(errCode).toInt() != 0) {
        qCritical().noquote().nospace()
            << "report error: " << compact(document.object()) << ":" << QString::fromUtf8(batch);
    }
}

void HttpManager::uploadFile(const QString &path, const QString &fileName, AfterUpload after,
                             std::function<void(bool taken)> done)
{
    const auto tell = [done = std::move(done)](bool taken) {
        if (done)
            done(taken);
    };
    if (dependencies_.baseAddress.isEmpty()) {
        qInfo().noquote().nospace() << path << " cannot be uploaded: no cloud is known";
        tell(false);
        return;
    }
    // Not left open: whoever writes the next such file must be able to replace
    // it while this one is still under way.
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qInfo().noquote().nospace() << path << " cannot be uploaded: " << file.errorString();
        tell(false);
        return;
    }
    const QByteArray content = file.readAll();
    file.close();
    const QUrl url(dependencies_.baseAddress + uploadPath);
    const auto finished = [path, content, after, tell](bool taken) {
        if (taken && after == AfterUpload::Remove && readContent(path) == content)
            QFile::remove(path);
        tell(taken);
    };
    proxies_.find(url, this, [this, url, content, fileName, finished] {
        upload(url, content, fileName, finished);
    });
}

void HttpManager::upload(const QUrl &url, const QByteArray &content, const QString &fileName,
                         const std::function<void(bool taken)> &done)
{
    auto form = std::make_unique<QHttpMultiPart>(QHttpMultiPart::FormDataType);
    form->append(filePart(content));
    form->append(namePart(fileName));
    QNetworkReply *const reply =
        networkManager_->post(cloud::request(url, dependencies_.peerCheck), form.get());
    form.release()->setParent(reply);
    const auto body = cloud::collectBody(reply);
    abortAfter(answerLimit, reply);
    connect(reply, &QNetworkReply::finished, this,
            [this, reply, body, done] { done(handleUploadReply(reply, *body)); });
}

bool HttpManager::handleUploadReply(QNetworkReply *reply, const QByteArray &body)
{
    bool isTaken = false;
    const QString address = reply->url().toString();
    QJsonParseError error = {};
    const QJsonDocument document = QJsonDocument::fromJson(body, &error);
    if (error.error != QJsonParseError::NoError) {
        qInfo().noquote().nospace() << address << " json parse fail";
    } else if (document.object().value(errCode).toInt() != 0) {
        qInfo().noquote().nospace()
            << document.object().value(QLatin1String("errMsg")).toString() << ":" << address;
    } else {
        isTaken = reply->error() == QNetworkReply::NoError && !cloud::isRedirect(*reply);
    }
    reply->deleteLater();
    return isTaken;
}

void HttpManager::abortAfter(std::chrono::milliseconds limit, QNetworkReply *reply)
{
    dependencies_.clock.singleShot(limit, reply, [reply] { reply->abort(); });
}

void HttpManager::abortRequests()
{
    cloud::abortRequests(*networkManager_, *this);
}

void HttpManager::timerEvent(QTimerEvent *)
{
    sendEvents(true);
}
