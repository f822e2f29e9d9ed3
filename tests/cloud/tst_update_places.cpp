#include "peers/cloud_sim/pattern.h"
#include "tests/cloud/update_fixture.h"

#include <QDir>
#include <QFileInfo>
#include <QSslConfiguration>

// Where an installer may come from, and where it may not be written to.
class TestUpdatePlaces : public UpdateFixture
{
    Q_OBJECT

    // Trusts the authority of the stand-in as if it were the system's.
    void trustTheAuthority()
    {
        QSslConfiguration tls = usual_;
        tls.addCaCertificates(QSslCertificate::fromPath(cloud_->authority()));
        QSslConfiguration::setDefaultConfiguration(tls);
    }

    QSslConfiguration usual_;

private slots:
    void initTestCase()
    {
        cloud_ = std::make_unique<CloudPeer>(CloudPeer::Identities::Made);
        QVERIFY(cloud_->isUp());
        usual_ = QSslConfiguration::defaultConfiguration();
        QVERIFY(!QSslCertificate::fromPath(cloud_->authority()).isEmpty());
        trustTheAuthority();
    }

    void aCloudIsSpokenToWhoseCertificateIsGood()
    {
        cloud_->begin(newer());
        make(cloud_->hostAs("good"), cloud::PeerCheck::On);
        settle();
        QCOMPARE(cloud_->receivedCount(), 3);
        QCOMPARE(offers_, QStringList("New|false"));
    }

    void aCloudThatCannotProveItselfIsNotSpokenTo_data()
    {
        QTest::addColumn<QString>("identity");
        QTest::addColumn<bool>("isKnown");
        QTest::newRow("wrong name") << "wrong-name" << true;
        QTest::newRow("expired") << "expired" << true;
        QTest::newRow("self-signed") << "self-signed" << true;
        QTest::newRow("an authority that nobody knows") << "good" << false;
    }

    void aCloudThatCannotProveItselfIsNotSpokenTo()
    {
        QFETCH(QString, identity);
        QFETCH(bool, isKnown);
        if (!isKnown)
            QSslConfiguration::setDefaultConfiguration(usual_);
        cloud_->begin(newer());
        const QString host = cloud_->hostAs(identity);
        make(host, cloud::PeerCheck::On);
        settle();
        update_.reset();
        QCOMPARE(cloud_->receivedCount(), 0);
        QCOMPARE(loggedWith("https://" + host +
                            "/orbresource/pc_compare.json failed: "
                            "SSL handshake failed"),
                 1);
        // The same is spoken to where nobody looks at certificates.
        make(host, cloud::PeerCheck::Off);
        settle();
        QVERIFY(cloud_->receivedCount() >= 2);
        trustTheAuthority();
    }

    void aLinkAtTheInstallersPlaceIsNotWrittenThrough()
    {
        QVERIFY(QDir().mkpath(download()));
        if (!QFile::link(path("precious"), installer()) || !QFileInfo(installer()).isSymbolicLink())
            QSKIP("There are no links here.");
        check(with(newer(), "installer", {{"size", 1000}}));
        QVERIFY(!QFileInfo::exists("precious"));
        QVERIFY(!QFileInfo(installer()).isSymbolicLink());
        QCOMPARE(readFile("data/download/Setup.exe"), pattern(0, 1000));
        QCOMPARE(offers_.size(), 1);
    }

    void nothingIsTakenOutOfALinkedFolder()
    {
        QVERIFY(QDir(dir()).mkpath("elsewhere"));
        QVERIFY(QDir(dir()).mkpath("data"));
        writeFile("elsewhere/own.exe", "the user's");
        if (!QFile::link(path("elsewhere"), download()) || !QFileInfo(download()).isSymbolicLink())
            QSKIP("There are no links here.");
        check(newer());
        QCOMPARE(readFile("elsewhere/own.exe"), QByteArray("the user's"));
    }

    void aCloudThatIsCheckedMayNameOnlyItself_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("in the clear") << "http://{host}/download/Setup.exe";
        QTest::newRow("another host") << "https://elsewhere.example/download/Setup.exe";
        QTest::newRow("another name of it") << "https://localhost/download/Setup.exe";
        QTest::newRow("a host that begins so") << "https://127.0.0.1.example/Setup.exe";
        QTest::newRow("a user of that name") << "https://127.0.0.1@elsewhere.example/Setup.exe";
    }

    void aCloudThatIsCheckedMayNameOnlyItself()
    {
        QFETCH(QString, url);
        url.replace("{host}", cloud_->host());
        cloud_->begin(newer({{"url", url}}));
        make(cloud_->hostAs("good"), cloud::PeerCheck::On);
        settle();
        QVERIFY(offers_.isEmpty());
        QCOMPARE(finished_, 1);
        QCOMPARE(logged().last(),
                 QString("Download of %1 failed: not an address of the cloud\n").arg(url));
    }

    void theInstallerIsMarkedWhenItIsKeptAndWhenItIsStarted()
    {
        QStringList marked;
        cloud_->begin(newer());
        ORBUpdate::Dependencies dependencies = checked();
        dependencies.mark = [&](const QString &file, const QString &from) {
            marked << (QFileInfo(file).isFile() ? from : QString());
            return false;
        };
        use(dependencies);
        const QString from = cloud_->base() + "/download/Setup.exe";
        QCOMPARE(marked, QStringList(from));
        QVERIFY(update_->setup());
        QCOMPARE(marked, QStringList({from, from}));
        QCOMPARE(started_, QStringList(installer()));
        QCOMPARE(loggedCount("The installer could not be marked as one from the net"), 2);
    }

    void onlyTheRightSignatureStartsAnInstaller_data()
    {
        QTest::addColumn<QString>("wanted");
        QTest::addColumn<QString>("signer");
        QTest::addColumn<bool>("starts");
        QTest::newRow("nobody is wanted") << ""
                                          << "" << true;
        QTest::newRow("the right one") << "KOLM Ltd."
                                       << "KOLM Ltd." << true;
        QTest::newRow("none") << "KOLM Ltd."
                              << "" << false;
        QTest::newRow("another") << "KOLM Ltd."
                                 << "KOLM Ltd. " << false;
        QTest::newRow("in small letters") << "KOLM Ltd."
                                          << "kolm ltd." << false;
    }

    void onlyTheRightSignatureStartsAnInstaller()
    {
        QFETCH(QString, wanted);
        QFETCH(QString, signer);
        QFETCH(bool, starts);
        cloud_->begin(newer());
        ORBUpdate::Dependencies dependencies = checked();
        dependencies.signer = wanted;
        dependencies.signerOf = [&](const QString &file) {
            return file == installer() ? signer : QString("of another file");
        };
        use(dependencies);
        if (!starts)
            announce("The installer is not started, its signer is: " +
                     (signer.isEmpty() ? "nobody" : signer));
        QCOMPARE(update_->setup(), starts);
        QCOMPARE(started_.size(), starts ? 1 : 0);
    }

private:
    ORBUpdate::Dependencies checked()
    {
        return {cloud_->host(), path("data"),
                [this](const QString &program) { started_ << program; }, cloud::PeerCheck::Off};
    }
    void use(const ORBUpdate::Dependencies &dependencies)
    {
        update_ = std::make_unique<ORBUpdate>(dependencies);
        settle();
    }
};

KOLM_TEST_MAIN(TestUpdatePlaces)
#include "tst_update_places.moc"
