#include "cloud/exchange.h"

#include "cloud/cloud_request.h"

#include <QLocale>
#include <QPointer>

#include <algorithm>
#include <chrono>
#include <cstring>

namespace {

using namespace std::chrono_literals;

// Nobody who closes the program waits for a network.
constexpr std::chrono::milliseconds patience = 200ms;

QByteArray acceptedLanguages()
{
    const QByteArray own = QLocale::system().name().replace('_', '-').toLatin1();
    if (own == "C")
        return "en,*";
    return own.startsWith("en-") ? own + ",*" : own + ",en,*";
}

QByteArray hostOf(const QUrl &url)
{
    QByteArray host = url.host(QUrl::FullyEncoded).toLatin1();
    if (host.contains(':'))
        host = '[' + host + ']';
    return url.port() < 0 ? host : host + ':' + QByteArray::number(url.port());
}

QByteArray targetOf(const QUrl &url, const QNetworkProxy &proxy)
{
    const QUrl plain = url.adjusted(QUrl::RemoveUserInfo | QUrl::RemoveFragment);
    if (Transfer::asksProxy(url, proxy))
        return plain.toEncoded();
    const QByteArray target = plain.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority);
    return target.startsWith('/') ? target : '/' + target;
}

QByteArray headOf(const QByteArray &method, const QNetworkRequest &request, int bodySize,
                  const QNetworkProxy &proxy)
{
    QByteArray head = method + ' ' + targetOf(request.url(), proxy) + " HTTP/1.1\r\n" +
                      "Host: " + hostOf(request.url()) + "\r\n";
    for (const QByteArray &name : request.rawHeaderList())
        head += name + ": " + request.rawHeader(name) + "\r\n";
    if (method == "POST")
        head += "Content-Length: " + QByteArray::number(bodySize) + "\r\n";
    return head + "Connection: close\r\nAccept-Encoding: identity\r\nAccept-Language: " +
           acceptedLanguages() + "\r\nUser-Agent: Mozilla/5.0\r\n\r\n";
}

QNetworkReply::NetworkError errorOf(int status)
{
    switch (status) {
    case 401:
        return QNetworkReply::AuthenticationRequiredError;
    case 403:
        return QNetworkReply::ContentAccessDenied;
    case 404:
        return QNetworkReply::ContentNotFoundError;
    case 407:
        return QNetworkReply::ProxyAuthenticationRequiredError;
    case 500:
        return QNetworkReply::InternalServerError;
    default:
        return status >= 500 ? QNetworkReply::UnknownServerError
                             : QNetworkReply::UnknownContentError;
    }
}

} // namespace

Exchange::Exchange(QNetworkAccessManager::Operation operation, const QNetworkRequest &request,
                   const QByteArray &body, const QNetworkProxy &proxy, QObject *parent)
    : QNetworkReply(parent), background_("a request to the cloud", patience)
{
    setOperation(operation);
    setRequest(request);
    setUrl(request.url());
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    Transfer::Order order;
    order.url = request.url();
    order.head = headOf(operation == QNetworkAccessManager::PostOperation ? "POST" : "GET", request,
                        body.size(), proxy);
    order.body = body;
    order.proxy = proxy;
    order.tls = request.sslConfiguration();
    order.longestBody = cloud::longestBody(request);
    transfer_ = std::make_shared<Transfer>(order, this);
    const bool isUnderWay = background_.run([transfer = transfer_] {
        transfer->run();
        return Background::Result();
    });
    if (!isUnderWay)
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (!isFinished())
                    finish(UnknownNetworkError, QStringLiteral("No thread for it"));
            },
            Qt::QueuedConnection);
}

Exchange::~Exchange()
{
    transfer_->cancel();
}

void Exchange::abort()
{
    if (isFinished())
        return;
    transfer_->cancel();
    finish(OperationCanceledError, QStringLiteral("Operation canceled"));
}

qint64 Exchange::bytesAvailable() const
{
    return QNetworkReply::bytesAvailable() + buffer_.size() - taken_;
}

qint64 Exchange::readData(char *data, qint64 size)
{
    const int part = static_cast<int>(std::min<qint64>(size, buffer_.size() - taken_));
    if (part == 0)
        return isFinished() ? -1 : 0;
    std::memcpy(data, buffer_.constData() + taken_, static_cast<std::size_t>(part));
    taken_ += part;
    if (taken_ == buffer_.size()) {
        buffer_.clear();
        taken_ = 0;
    }
    return part;
}

void Exchange::customEvent(QEvent *)
{
    if (isFinished())
        return;
    const QPointer<Exchange> self = this; // whoever hears of it may delete this
    const Transfer::News news = transfer_->take();
    if (news.status != 0 && !isHeadRead_) {
        isHeadRead_ = true;
        setAttribute(QNetworkRequest::HttpStatusCodeAttribute, news.status);
        setAttribute(QNetworkRequest::HttpReasonPhraseAttribute, QString::fromLatin1(news.reason));
        emit metaDataChanged();
    }
    if (self && !news.body.isEmpty()) {
        buffer_ += news.body;
        received_ += news.body.size();
        emit readyRead();
        if (self && !isFinished())
            emit downloadProgress(received_, news.length);
    }
    if (!self || isFinished() || !news.isOver)
        return;
    if (news.error == NoError && news.length < 0)
        emit downloadProgress(received_, received_);
    if (news.error == NoError && news.status >= 400)
        finish(errorOf(news.status), QStringLiteral("Error transferring %1 - server replied: %2")
                                         .arg(url().toString(), QString::fromLatin1(news.reason)));
    else
        finish(news.error, news.errorText);
}

void Exchange::finish(NetworkError error, const QString &text)
{
    setFinished(true);
    if (error != NoError) {
        setError(error, text);
        emit errorOccurred(error);
    }
    emit finished();
}
