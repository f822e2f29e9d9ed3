// Reports usage events to the vendor cloud and uploads files to it.
#pragma once

#include "base/mutex.h"
#include "cloud/cloud_request.h"
#include "cloud/proxy_finder.h"

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <vector>

class Clock;
class QNetworkAccessManager;
class QNetworkReply;

// Events are kept and sent together every ten minutes. Nothing is written to
// disk and nothing is sent twice: a batch that does not get there is lost. No
// failure is shown to the user; the log tells of it.
//
// Lives on the GUI thread; addEvent() may be called from any.
class HttpManager : public QObject
{
    Q_OBJECT

public:
    struct Dependencies
    {
        Clock &clock;
        // This PC, for every event anew. Called on the thread of addEvent().
        std::function<QJsonObject()> describePc = {};
        // With the scheme, without a slash at the end. Empty: there is no cloud, and
        // nothing is kept or sent.
        QString baseAddress = {};
        cloud::PeerCheck peerCheck = cloud::PeerCheck::On;
        ProxyFinder::Ask askForProxies = {}; // without it the cloud is reached directly
    };

    explicit HttpManager(Dependencies dependencies, QObject *parent = nullptr);

    static HttpManager &instance();

    // Keeps the event, stamped with the time and this PC's description.
    void addEvent(const QString &eventId, const QJsonObject &extraData);

    // Drops what is kept and was not sent yet.
    void forgetEvents();

    // Sends everything kept so far as one batch; nothing if there is nothing.
    // Asynchronously it returns at once. Otherwise it runs an event loop until
    // the cloud has answered, five seconds at most, whatever they go by with; no
    // longer when the requests are given up or this object goes meanwhile.
    void sendEvents(bool asynchronous);

    // Sends the file, as it is now, in the background; `fileName` is how the
    // cloud calls it. A file that cannot be read is not sent. With Remove it goes when
    // the cloud has taken it, unless it is another one by then. `done` is called with
    // whether it has, perhaps at once; not any more after abortRequests().
    enum class AfterUpload { Keep, Remove };
    void uploadFile(const QString &path, const QString &fileName,
                    AfterUpload after = AfterUpload::Keep,
                    std::function<void(bool taken)> done = {});

    // Gives up whatever is under way, without a word to anybody, and closes the
    // connections. For the end of the program, before the TLS library goes: the
    // one instance outlives that.
    void abortRequests();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    QByteArray takeBatch();
    QNetworkReply *post(const QUrl &url, const QByteArray &batch);
    void sendInBackground(const QUrl &url, const QByteArray &batch);
    void sendAndWait(const QUrl &url, const QByteArray &batch);
    void handleBatchAnswer(const QByteArray &body, const QByteArray &batch);
    void upload(const QUrl &url, const QByteArray &content, const QString &fileName,
                const std::function<void(bool taken)> &done);
    // Whether the cloud has taken what was sent.
    bool handleUploadReply(QNetworkReply *reply, const QByteArray &body);
    void abortAfter(std::chrono::milliseconds limit, QNetworkReply *reply);

    const Dependencies dependencies_;
    QNetworkAccessManager *networkManager_;
    ProxyFinder proxies_;
    Mutex queueMutex_;
    // Each as the text that is sent, oldest first: so even a long queue is sent
    // without holding up the window.
    std::vector<QByteArray> pendingEvents_ GUARDED_BY(queueMutex_);
};
