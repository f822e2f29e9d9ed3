#include "cloud/orb_update.h"

#include "cloud/download_folder.h"
#include "cloud/installer_name.h"
#include "cloud/network.h"
#include "cloud/version_comparison.h"
#include "sysinfo/system_info.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkReply>
#include <QStringList>

#include <chrono>
#include <utility>

namespace {

using namespace std::chrono_literals;

const QString tablePath = QStringLiteral("/orbresource/pc_compare.json");
const QString versionPath = QStringLiteral("/vrmcsys/appstore/getAlvrVerInfo");
const QString errCode = QStringLiteral("errCode");
const QString data = QStringLiteral("data");

constexpr qint64 longestVersion = 1LL << 16; // bytes

constexpr auto heldInterval = 1s;
constexpr int heldTries = 10;

QUrl addressAt(const QString &host, const QString &path)
{
    return QUrl(QStringLiteral("https://") + host + path);
}

void logFailure(const QUrl &url, const QString &why)
{
    qInfo().noquote() << QStringLiteral("Download of %1 failed: %2\n")
                             .arg(QString::fromLatin1(url.toEncoded()), why);
}

// Logs the failure; true when there is one.
bool hasFailed(const QNetworkReply &reply)
{
    if (reply.error() == QNetworkReply::NoError)
        return false;
    logFailure(reply.request().url(), reply.errorString());
    return true;
}

// Qt would also read a local file.
bool isOnTheNet(const QUrl &url)
{
    return url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http");
}

// Whether `url` leads to the cloud itself, whose certificate says that it is it.
bool isAt(const QString &host, const QUrl &url)
{
    const QUrl cloud(QStringLiteral("https://") + host);
    return url.scheme() == cloud.scheme() && !url.host().isEmpty() && url.host() == cloud.host();
}

} // namespace

ORBUpdate::ORBUpdate(Dependencies dependencies, QObject *parent)
    : QObject(parent), dependencies_(std::move(dependencies)),
      networkManager_(new cloud::Network(this)),
      proxies_(*networkManager_, dependencies_.askForProxies)
{
    if (dependencies_.host.isEmpty())
        return;
    proxies_.hold();
    fetchTable();
    queryVersion();
}

void ORBUpdate::get(const QUrl &url, qint64 longest, const Handler &handle)
{
    proxies_.find(url, this, [this, url, longest, handle] {
        handle(networkManager_->get(cloud::request(url, dependencies_.peerCheck, longest)));
    });
}

void ORBUpdate::fetchTable()
{
    // Wherever the program works later, the rules are looked for where it
    // started.
    const QString target = QDir::currentPath() + QStringLiteral("/compare.json");
    get(addressAt(dependencies_.host, tablePath), cloud::usualBody,
        [this, target](QNetworkReply *reply) { handleTable(reply, target); });
}

void ORBUpdate::handleTable(QNetworkReply *reply, const QString &target)
{
    const auto body = cloud::collectBody(reply);
    connect(reply, &QNetworkReply::finished, this, [reply, body, target] {
        reply->deleteLater();
        if (hasFailed(*reply))
            return;
        if (cloud::isRedirect(*reply)) {
            qInfo().noquote().nospace()
                << reply->request().url().toString() << "Request was redirected.\n";
        } else if (saveDownload(*body, target) != Saved::Done) {
            qInfo("down compare.json fail");
        }
    });
}

void ORBUpdate::queryVersion()
{
    const QUrl url = addressAt(dependencies_.host, versionPath);
    proxies_.find(url, this, [this, url] {
        QNetworkRequest request = cloud::request(url, dependencies_.peerCheck, longestVersion);
        request.setHeader(QNetworkRequest::ContentTypeHeader,
                          QStringLiteral("text/plain;charset=UTF-8"));
        handleVersion(networkManager_->post(request, QByteArrayLiteral("{}")));
    });
}

void ORBUpdate::handleVersion(QNetworkReply *reply)
{
    // Read once: what does not come in one piece is not understood.
    connect(reply, &QNetworkReply::readyRead, this, [this, reply] {
        reply->disconnect(this);
        readVersion(reply);
        reply->deleteLater();
    });
    connect(reply, &QNetworkReply::finished, reply, &QObject::deleteLater);
}

void ORBUpdate::abortRequests()
{
    keeping_.reset();
    cloud::abortRequests(*networkManager_, *this);
}

void ORBUpdate::readVersion(QNetworkReply *reply)
{
    if (reply->error() != QNetworkReply::NoError)
        return;
    QJsonParseError error = {};
    const QJsonDocument document = QJsonDocument::fromJson(reply->readAll(), &error);
    if (error.error != QJsonParseError::NoError) {
        qInfo("json parseError");
        return;
    }
    const QJsonObject answer = document.object();
    if (!answer.contains(errCode) || answer.value(errCode).toInt() != 0) {
        qInfo().noquote().nospace()
            << "check version: "
            << QString::fromUtf8(QJsonDocument(answer).toJson(QJsonDocument::Compact));
    } else if (answer.contains(data)) {
        offer(answer.value(data).toObject());
    }
}

// Makes the newer version's installer ready, if it is newer.
void ORBUpdate::offer(const QJsonObject &latest)
{
    const QString remote = latest.value(QLatin1String("version")).toString();
    if (!isNewerVersion(SystemInfo::assistantVersion(), remote))
        return;
    qInfo("start update");
    isForce_ = latest.value(QLatin1String("forced")).toInt() == 1;
    note_ = latest.value(QLatin1String("note")).toString();
    note_.replace(QLatin1String("/n"), QLatin1String("<br>"));
    downloadUrl_ = latest.value(QLatin1String("url")).toString();

    const QString folder = dependencies_.dataDir + QStringLiteral("/download/");
    const QString name = installerName(QUrl(downloadUrl_));
    if (!mayBeInstaller(name))
        return;
    installerPath_ = folder + name;
    prepareDownloadFolder(folder, name);
    if (QFileInfo(installerPath_).isFile())
        emit updateSignal(note_, isForce_);
    else
        fetchInstaller();
}

// Whether what the address names may be kept and started.
bool ORBUpdate::mayBeInstaller(const QString &name)
{
    const QUrl url(downloadUrl_);
    QString why;
    if (!isOnTheNet(url))
        why = QStringLiteral("not an address on the net");
    else if (dependencies_.peerCheck == cloud::PeerCheck::On && !isAt(dependencies_.host, url))
        why = QStringLiteral("not an address of the cloud");
    else if (!isInstallerName(name))
        why = QStringLiteral("not an installer");
    if (why.isEmpty())
        return true;
    logFailure(url, why);
    emit downExeFinish();
    return false;
}

void ORBUpdate::fetchInstaller()
{
    const QUrl url(downloadUrl_);
    get(url, dependencies_.longestInstaller,
        [this](QNetworkReply *reply) { handleInstaller(reply); });
}

void ORBUpdate::handleInstaller(QNetworkReply *reply)
{
    const auto body = cloud::collectBody(reply);
    connect(reply, &QNetworkReply::downloadProgress, this, [this](qint64 received, qint64 total) {
        if (total != 0)
            emit processStatus(static_cast<float>(received) / static_cast<float>(total));
    });
    connect(reply, &QNetworkReply::finished, this, [this, reply, body] {
        reply->deleteLater();
        if (!hasFailed(*reply)) {
            if (!cloud::isRedirect(*reply)) {
                keepInstaller(*body, heldTries);
                return;
            }
            qInfo("Request was redirected.\n");
        }
        emit downExeFinish();
    });
}

// A virus scanner looks into every program that is new, and holds it meanwhile.
void ORBUpdate::keepInstaller(const QByteArray &body, int triesLeft)
{
    const Saved saved = dependencies_.save(body, installerPath_);
    if (saved == Saved::Held && triesLeft > 0) {
        if (triesLeft == heldTries)
            qInfo("The installer is held by another program, trying again");
        keeping_ = std::make_unique<QObject>();
        dependencies_.clock.singleShot(heldInterval, keeping_.get(), [this, body, triesLeft] {
            keepInstaller(body, triesLeft - 1);
        });
        return;
    }
    if (saved == Saved::Held)
        qInfo("The installer is still held by another program, given up");
    if (saved == Saved::Done)
        markInstaller();
    if (saved == Saved::Done)
        emit updateSignal(note_, isForce_);
    emit downExeFinish();
}

bool ORBUpdate::setup()
{
    if (setupStarted_)
        return false;
    setupStarted_ = true;
    if (!QFileInfo(installerPath_).isFile())
        return false;
    // One that was there already may have come without it.
    markInstaller();
    if (!isSigned())
        return false;
    dependencies_.start(installerPath_);
    return true;
}

void ORBUpdate::markInstaller()
{
    if (dependencies_.mark && !dependencies_.mark(installerPath_, downloadUrl_))
        qInfo("The installer could not be marked as one from the net");
}

bool ORBUpdate::isSigned() const
{
    if (dependencies_.signer.isEmpty())
        return true;
    const QString signer =
        dependencies_.signerOf ? dependencies_.signerOf(installerPath_) : QString();
    if (signer == dependencies_.signer)
        return true;
    qWarning().noquote() << "The installer is not started, its signer is:"
                         << (signer.isEmpty() ? QStringLiteral("nobody") : signer);
    return false;
}

QString ORBUpdate::version()
{
    const QStringList parts = SystemInfo::assistantVersion().split(QLatin1Char('.'));
    if (parts.size() < 4)
        return QStringLiteral("v1.0.0");
    return QStringLiteral("v%1.%2.%3").arg(parts[0], parts[1], parts[2]);
}
