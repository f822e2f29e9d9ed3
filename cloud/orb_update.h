// Keeps the assistant current.
#pragma once

#include "base/clock.h"
#include "cloud/cloud_request.h"
#include "cloud/downloaded_file.h"
#include "cloud/proxy_finder.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;

// As soon as it is there it fetches the requirements table into the working
// folder and asks for the latest version; a newer one's installer is fetched
// before the user hears of it. All of that once a run. Failures are logged and
// otherwise silent.
//
// GUI thread. The order of signals and methods is part of the contract with
// the pages.
class ORBUpdate : public QObject
{
    Q_OBJECT

public:
    struct Dependencies
    {
        QString host;    // of the vendor cloud, see cloud::host(); empty: nobody is asked
        QString dataDir; // the installer is kept in "download" below it
        // Starts the program at `path`, which lives on by itself.
        std::function<void(const QString &path)> start;
        cloud::PeerCheck peerCheck = cloud::PeerCheck::On;
        // A longer installer is not taken: it is held in memory on the way.
        qint64 longestInstaller = 512LL << 20; // bytes
        Clock &clock = Clock::system();
        std::function<Saved(const QByteArray &content, const QString &path)> save = saveDownload;
        // Notes that the file at `path` came from the net; false when it cannot.
        std::function<bool(const QString &path, const QString &from)> mark = {};
        // Who has to have signed an installer; empty: nobody has to.
        QString signer = {};
        // Whose valid signature the file at `path` has.
        std::function<QString(const QString &path)> signerOf = {};
        // Without it the cloud is reached directly, and at once.
        ProxyFinder::Ask askForProxies = {};
    };

    explicit ORBUpdate(Dependencies dependencies, QObject *parent = nullptr);

signals:
    // A newer installer is ready on disk.
    void updateSignal(QString note, bool isForce);
    // Installer download progress, 0 to 1; negative while the size is unknown.
    void processStatus(float val);
    // The installer download has ended, successfully or not.
    void downExeFinish();

public:
    // Starts the downloaded installer; false when there is none, when it lacks the
    // signature that it has to have, and whenever it was called before.
    Q_INVOKABLE bool setup();
    // The assistant's version as it is shown, for example "v1.2.3".
    Q_INVOKABLE QString version();

    // The window is there: from now on the system may be asked how the cloud is
    // reached, which takes time from whoever draws.
    void goOnline() { proxies_.release(); }

    // Gives up whatever is under way, without a word to anybody, and closes the
    // connections. To be called while the event loop still lives: the network's
    // thread ends with it.
    void abortRequests();

private:
    // What is made of the reply to a request that was just sent.
    using Handler = std::function<void(QNetworkReply *reply)>;
    void get(const QUrl &url, qint64 longest, const Handler &handle);
    void handleTable(QNetworkReply *reply, const QString &target);
    void handleVersion(QNetworkReply *reply);
    void handleInstaller(QNetworkReply *reply);
    void fetchTable();
    void queryVersion();
    void readVersion(QNetworkReply *reply);
    void offer(const QJsonObject &latest);
    bool mayBeInstaller(const QString &name);
    void fetchInstaller();
    void markInstaller();
    bool isSigned() const;
    void keepInstaller(const QByteArray &body, int triesLeft);

    const Dependencies dependencies_;
    QNetworkAccessManager *networkManager_;
    ProxyFinder proxies_;
    QString downloadUrl_;
    QString note_; // lines separated by "<br>"
    QString installerPath_;
    bool isForce_ = false;
    bool setupStarted_ = false;
    // Goes with the wish to keep an installer that somebody holds.
    std::unique_ptr<QObject> keeping_;
};
