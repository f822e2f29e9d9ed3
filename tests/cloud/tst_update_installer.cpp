#include "peers/cloud_sim/pattern.h"
#include "tests/cloud/update_fixture.h"

#include <QDir>
#include <QUrl>

// The installer of a newer version: fetched, kept in its place, started.
class TestUpdateInstaller : public UpdateFixture
{
    Q_OBJECT

private slots:
    void anInstallerThatIsThereIsOfferedWithoutADownload()
    {
        QVERIFY(QDir().mkpath(download()));
        writeFile("data/download/Setup.exe", "another build");
        check(newer({{"forced", 1}}));
        QCOMPARE(offers_, QStringList("New|true"));
        QCOMPARE(finished_, 0);
        QVERIFY(progress_.isEmpty());
        QCOMPARE(cloud_->receivedCount(), 2);
        QCOMPARE(readFile("data/download/Setup.exe"), QByteArray("another build"));
    }

    void anInstallerThatDoesNotComeIsNotOffered_data()
    {
        QTest::addColumn<QJsonObject>("answer");
        QTest::addColumn<QString>("line");
        const QString failed = "Download of https://{host}/download/Setup.exe failed: ";
        QTest::newRow("500") << QJsonObject{{"status", 500}}
                             << failed + "Error transferring https://{host}/download/Setup.exe - "
                                         "server replied: Internal Server Error\n";
        QTest::newRow("cut") << QJsonObject{{"size", 300000}, {"cutAfter", 150000}}
                             << failed + "Connection closed\n";
        for (const int status : {301, 302, 303, 305, 307, 308}) {
            QTest::addRow("%d", status)
                << QJsonObject{{"status", status},
                               {"headers", QJsonObject{{"Location", "{base}/download/x"}}},
                               {"body", "moved"}}
                << "Request was redirected.\n";
        }
    }

    void anInstallerThatDoesNotComeIsNotOffered()
    {
        QFETCH(QJsonObject, answer);
        QFETCH(QString, line);
        check(with(newer(), "installer", answer));
        QVERIFY(offers_.isEmpty());
        QCOMPARE(finished_, 1);
        QCOMPARE(logged(), QStringList({"start update", line.replace("{host}", cloud_->host())}));
        QCOMPARE(QDir(download()).entryList(QDir::Files | QDir::Hidden), QStringList());
        QCOMPARE(cloud_->receivedCount(), 3);
        QVERIFY(!update_->setup());
    }

    void anInstallerOfUnknownSizeShowsItsProgressBelowZero()
    {
        // Slow enough for more than one sign of life.
        check(with(newer(), "installer",
                   {{"size", 300000}, {"length", false}, {"pieces", 4}, {"gapMilliseconds", 150}}));
        QCOMPARE(offers_, QStringList("New|false"));
        QCOMPARE(readFile("data/download/Setup.exe"), pattern(0, 300000));
        QVERIFY(progress_.size() > 1);
        // At the end it is known.
        QCOMPARE(progress_.last(), 1.0f);
        QVERIFY(std::all_of(progress_.begin(), progress_.end() - 1, [](float v) { return v < 0; }));
    }

    void theInstallerLiesInItsFolderWhateverTheAddressSays_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("name");
        QTest::newRow("up") << "/download/..%2F..%2F..%2Fevil.exe"
                            << "evil.exe";
        QTest::newRow("backslashes") << "/download/..%5C..%5Cevil.exe"
                                     << "evil.exe";
        QTest::newRow("drive") << "/download/C%3Aevil.exe"
                               << "C_evil.exe";
        QTest::newRow("stream") << "/download/a%3Ab.exe"
                                << "a_b.exe";
        QTest::newRow("device") << "/download/NUL.exe"
                                << "_NUL.exe";
        QTest::newRow("no name") << "/download/"
                                 << "KOLM_Streaming_Assistant.exe";
        QTest::newRow("quotes") << "/download/a%22%20-x%20%22.exe"
                                << "a_ -x _.exe";
        QTest::newRow("long") << "/download/" + QString(300, 'a') + ".exe"
                              << QString(116, 'a') + ".exe";
        QTest::newRow("capitals") << "/download/SETUP.EXE"
                                  << "SETUP.EXE";
        QTest::newRow("package") << "/download/setup.msi"
                                 << "setup.msi";
    }

    void theInstallerLiesInItsFolderWhateverTheAddressSays()
    {
        QFETCH(QString, address);
        QFETCH(QString, name);
        check(newer({{"url", "{base}" + address}}));
        QCOMPARE(offers_.size(), 1);
        QCOMPARE(QDir(download()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList(name));
        QVERIFY(update_->setup());
        QCOMPARE(started_, QStringList(download() + '/' + name));
    }

    void onlyTheNetIsAskedForTheInstaller_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("file") << QUrl::fromLocalFile(QCoreApplication::applicationFilePath())
                                     .toString(QUrl::FullyEncoded);
        QTest::newRow("resource") << "qrc:/qt-project.org/qmime/packages/freedesktop.org.xml";
        QTest::newRow("data") << "data:,x";
        QTest::newRow("empty") << "";
        QTest::newRow("relative") << "download/Setup.exe";
    }

    void onlyTheNetIsAskedForTheInstaller()
    {
        QFETCH(QString, url);
        check(newer({{"url", url}}));
        QVERIFY(offers_.isEmpty());
        QCOMPARE(finished_, 1);
        QCOMPARE(logged().last(),
                 QString("Download of %1 failed: not an address on the net\n").arg(url));
        QCOMPARE(QDir(download()).entryList(QDir::Files), QStringList());
    }

    void onlyInstallersAreKept_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"a.bat", "a.cmd", "a.com", "a.scr", "a.ps1", "a.exe.lnk", "a.zip",
                                 "exe", "a.exe%3Ab", "setup", "a.msix"})
            QTest::newRow(name) << name;
    }

    void onlyInstallersAreKept()
    {
        QFETCH(QString, name);
        QVERIFY(QDir().mkpath(download()));
        writeFile("data/download/a.bat", "there already");
        check(newer({{"url", "{base}/download/" + name}}));
        QVERIFY(offers_.isEmpty());
        QCOMPARE(finished_, 1);
        QCOMPARE(logged().last(), QString("Download of %1/download/%2 failed: not an installer\n")
                                      .arg(cloud_->base(), name));
        QCOMPARE(cloud_->receivedCount(), 2);
        QVERIFY(!update_->setup());
    }

    void thereIsOneInstallerAtATime()
    {
        QVERIFY(QDir().mkpath(download() + "/folder.exe"));
        for (const char *name : {"Old.exe", "Old.MSI", "Setup.exe.aZ09bC", "notes.txt"})
            writeFile(QString("data/download/") + name, "old");
        check(newer());
        QCOMPARE(offers_.size(), 1);
        QCOMPARE(QDir(download()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name),
                 QStringList({"Setup.exe", "folder.exe", "notes.txt"}));
    }

    void aLongerInstallerThanAllowedIsNotTaken()
    {
        cloud_->begin(with(newer(), "installer", {{"size", 40 << 20}}));
        make(cloud_->host(), cloud::PeerCheck::Off, 1 << 20);
        settle();
        QVERIFY(offers_.isEmpty());
        QCOMPARE(finished_, 1);
        QCOMPARE(loggedWith("failed: Operation canceled"), 1);
        QCOMPARE(QDir(download()).entryList(QDir::Files), QStringList());
    }

    void setupStartsTheInstallerOnce()
    {
        check(newer());
        QVERIFY(update_->setup());
        QCOMPARE(started_, QStringList(installer()));
        QVERIFY(!update_->setup());
        QCOMPARE(started_.size(), 1);
    }

    void withoutAnInstallerSetupFailsForGood()
    {
        check(newer());
        QVERIFY(QFile::rename(installer(), path("away")));
        QVERIFY(!update_->setup());
        QVERIFY(QFile::rename(path("away"), installer()));
        QVERIFY(!update_->setup());
        QVERIFY(started_.isEmpty());
    }

    void withoutAnUpdateSetupFails()
    {
        make("127.0.0.1:9/@none");
        QVERIFY(!update_->setup());
        QVERIFY(started_.isEmpty());
    }
};

KOLM_TEST_MAIN(TestUpdateInstaller)
#include "tst_update_installer.moc"
