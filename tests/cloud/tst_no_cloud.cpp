#include "base/manual_clock.h"
#include "cloud/http_manager.h"
#include "cloud/orb_update.h"
#include "tests/support/test_case.h"

#include <QNetworkReply>

// A program that was built for no cloud.
class TestNoCloud : public TestCase
{
    Q_OBJECT

    static ProxyFinder::Ask nobody()
    {
        return [](const QUrl &url) {
            qCritical("looked for a way to %s", qPrintable(url.toString()));
            return ProxyFinder::Proxies{};
        };
    }

private slots:
    void nobodyIsAskedForUpdates()
    {
        ORBUpdate::Dependencies dependencies;
        dependencies.dataDir = path("data");
        ORBUpdate update(dependencies); // would ask at once, not knowing of proxies
        QVERIFY(update.findChildren<QNetworkReply *>().isEmpty());
        QVERIFY(!update.setup());
        QCOMPARE(logged(), QStringList());
    }

    void nothingIsSent()
    {
        ManualClock clock;
        HttpManager::Dependencies dependencies{clock, [] { return QJsonObject(); }};
        dependencies.askForProxies = nobody();
        HttpManager manager(dependencies);
        manager.addEvent("id", {});
        clock.advance(600000);
        QCoreApplication::processEvents();
        manager.addEvent("id", {});
        manager.sendEvents(false);
        writeFile("feedback.json", "{}");
        manager.uploadFile("feedback.json", "name");
        QVERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
        QCOMPARE(logged(), QStringList("feedback.json cannot be uploaded: no cloud is known"));
    }
};

KOLM_TEST_MAIN(TestNoCloud)
#include "tst_no_cloud.moc"
