#include "cloud/cloud_request.h"

#include "cloud/cloud_host.h"
#include "tests/support/test_case.h"

#include <QSslConfiguration>
#include <QSslSocket>

class TestCloudRequest : public TestCase
{
    Q_OBJECT

private slots:
    void theBuildDecidesAboutTheCheckAndTheHost()
    {
        QCOMPARE(cloud::builtPeerCheck() == cloud::PeerCheck::On, bool(VERIFY_PEER));
        qputenv("SIMPC_CLOUD_HOST", "elsewhere.example");
        QCOMPARE(cloud::host(), QString(CLOUD_HOST));
        qunsetenv("SIMPC_CLOUD_HOST");
    }

    void whoPutsTheProgramTogetherMayNameAnotherHost()
    {
        const QString built = cloud::host();
        cloud::useHost("elsewhere.example:1");
        QCOMPARE(cloud::host(), QString("elsewhere.example:1"));
        cloud::useHost(built);
    }

    void withoutAPeerCheckEveryProtocolWillDo()
    {
        const QSslConfiguration tls =
            cloud::request(QUrl("https://host/path"), cloud::PeerCheck::Off).sslConfiguration();
        QCOMPARE(tls.peerVerifyMode(), QSslSocket::VerifyNone);
        // The one value of the two that starts lowest in this TLS library.
        const bool isOpenSsl = QSslSocket::sslLibraryVersionString().startsWith("OpenSSL");
        QCOMPARE(tls.protocol(), isOpenSsl ? QSsl::TlsV1SslV3 : QSsl::TlsV1_0OrLater);
    }

    void thePeerCheckAlsoAsksForAModernProtocol()
    {
        const QSslConfiguration tls =
            cloud::request(QUrl("https://host/path"), cloud::PeerCheck::On).sslConfiguration();
        QCOMPARE(tls.peerVerifyMode(), QSslSocket::VerifyPeer);
        QCOMPARE(tls.protocol(), QSsl::TlsV1_2OrLater);
    }

    void nothingElseOfTheTlsSettingsIsChanged()
    {
        QSslConfiguration tls =
            cloud::request(QUrl("https://host/path"), cloud::PeerCheck::Off).sslConfiguration();
        const QSslConfiguration usual = QNetworkRequest().sslConfiguration();
        tls.setPeerVerifyMode(usual.peerVerifyMode());
        tls.setProtocol(usual.protocol());
        QVERIFY(tls == usual);
    }

    void theAddressStaysAndNoRedirectIsFollowed()
    {
        for (const cloud::PeerCheck check : {cloud::PeerCheck::Off, cloud::PeerCheck::On}) {
            const QNetworkRequest request = cloud::request(QUrl("https://host/path"), check);
            QCOMPARE(request.url(), QUrl("https://host/path"));
            QCOMPARE(request.attribute(QNetworkRequest::RedirectPolicyAttribute),
                     QVariant(QNetworkRequest::ManualRedirectPolicy));
            QCOMPARE(request.rawHeaderList(), QList<QByteArray>());
        }
    }
};

KOLM_TEST_MAIN(TestCloudRequest)
#include "tst_cloud_request.moc"
