#include "base/file_io.h"
#include "tests/cloud/events_fixture.h"

// Files that are sent.
class TestHttpUpload : public EventsFixture
{
    Q_OBJECT

private slots:
    void anUploadLooksLikeThisOnTheWire()
    {
        useNamed("normal");
        const QByteArray content =
            QByteArray("{\"content\":\"\xe5\xa5\xbd\"}\r\n--x") + QByteArray(2, '\0');
        writeFile("feedback.json", content);
        manager_->uploadFile(path("feedback.json"), "2024-05-17 14:03:07_D3_中 & é\"");
        QTRY_VERIFY(!isBusy());
        QCOMPARE(cloud_->receivedCount(), 1);
        const Received request = cloud_->received().first();
        QCOMPARE(request.method, QByteArray("POST"));
        QCOMPARE(request.target, QByteArray("/vrmcsys/fileserver/Stiosko/upload"));
        const QByteArray type = request.headers.value("Content-Type");
        const QByteArray start = "multipart/form-data; boundary=\"";
        QVERIFY2(type.startsWith(start) && type.endsWith('"'), type);
        const QByteArray boundary = type.mid(start.size()).chopped(1);
        QVERIFY(!boundary.isEmpty());
        QCOMPARE(request.headers.value("Content-Length"), QByteArray::number(request.body.size()));
        QCOMPARE(request.body,
                 "--" + boundary +
                     "\r\nContent-Disposition: form-data;name=\"file\";filename=\".json\""
                     "\r\nContent-Type: multipart/form-data;\r\n\r\n" +
                     content + "\r\n--" + boundary +
                     "\r\nContent-Disposition: form-data;name=\"fileName\"\r\n\r\n"
                     "2024-05-17 14:03:07_D3_中 & é\"\r\n--" +
                     boundary + "--\r\n");
        QVERIFY(logged().isEmpty());
    }

    void theAnswerToAnUploadIsOnlyLogged_data()
    {
        QTest::addColumn<QString>("answers");
        QTest::addColumn<QString>("line");
        QTest::newRow("refused") << "error-code"
                                 << "no:{address}";
        QTest::newRow("HTML") << "html"
                              << "{address} json parse fail";
        QTest::newRow("cut") << "cut"
                             << "{address} json parse fail";
    }

    void theAnswerToAnUploadIsOnlyLogged()
    {
        QFETCH(QString, answers);
        QFETCH(QString, line);
        useNamed(answers);
        writeFile("feedback.json", "{}");
        manager_->uploadFile("feedback.json", "name");
        QTRY_VERIFY(!isBusy());
        const QString address = cloud_->base() + "/vrmcsys/fileserver/Stiosko/upload";
        QCOMPARE(logged(), QStringList(line.replace("{address}", address)));
    }

    void whatTheCloudHasTakenGoes_data()
    {
        QTest::addColumn<QString>("answers");
        QTest::addColumn<bool>("goes");
        QTest::newRow("taken") << "normal" << true;
        QTest::newRow("refused") << "error-code" << false;
        QTest::newRow("HTML") << "html" << false;
        QTest::newRow("500") << "error-500" << false;
        QTest::newRow("cut") << "cut" << false;
    }

    void whatTheCloudHasTakenGoes()
    {
        QFETCH(QString, answers);
        QFETCH(bool, goes);
        useNamed(answers);
        writeFile("feedback.json", "{}");
        QList<bool> done;
        manager_->uploadFile("feedback.json", "name", HttpManager::AfterUpload::Remove,
                             [&done](bool taken) { done.append(taken); });
        QVERIFY(QFile::exists("feedback.json"));
        QTRY_VERIFY(!isBusy());
        QCOMPARE(QFile::exists("feedback.json"), !goes);
        QCOMPARE(done, QList<bool>{goes});
    }

    void whatWasOnlySentElsewhereStays()
    {
        use(QJsonObject{
            {"upload", QJsonObject{{"status", 302}, {"json", QJsonObject{{"errCode", 0}}}}}});
        writeFile("feedback.json", "{}");
        manager_->uploadFile("feedback.json", "name", HttpManager::AfterUpload::Remove);
        QTRY_VERIFY(!isBusy());
        QVERIFY(QFile::exists("feedback.json"));
    }

    void whatIsToStayStays()
    {
        useNamed("normal");
        writeFile("feedback.json", "{}");
        manager_->uploadFile("feedback.json", "name");
        QTRY_VERIFY(!isBusy());
        QVERIFY(QFile::exists("feedback.json"));
    }

    void whatWasWrittenMeanwhileStays()
    {
        useNamed("normal");
        writeFile("feedback.json", "first");
        manager_->uploadFile("feedback.json", "name", HttpManager::AfterUpload::Remove);
        writeFile("feedback.json", "second");
        QTRY_VERIFY(!isBusy());
        QCOMPARE(readFile("feedback.json"), QByteArray("second"));
    }

    void aFileThatCannotBeReadIsNotUploaded()
    {
        useNamed("normal");
        manager_->uploadFile("missing.json", "name");
        QVERIFY(!isBusy());
        QCOMPARE(logged().size(), 1);
        QVERIFY(logged().first().startsWith("missing.json cannot be uploaded: "));
    }

    void aFileIsSentAsItWasAndMayBeReplacedMeanwhile()
    {
        useNamed("silent");
        for (const char *content : {"first", "second"}) {
            QCOMPARE(replaceFile("feedback.json", content), WriteResult::Ok);
            manager_->uploadFile("feedback.json", "name");
        }
        writeFile("feedback.json", "overwritten");
        QTRY_COMPARE(cloud_->receivedCount(), 2);
        QVERIFY(isWaiting());
        // They have a connection each, and either may be the faster.
        const QList<Received> requests = cloud_->received();
        const bool inOrder = requests[0].body.contains("\r\n\r\nfirst\r\n");
        QVERIFY(requests[inOrder ? 0 : 1].body.contains("\r\n\r\nfirst\r\n"));
        QVERIFY(requests[inOrder ? 1 : 0].body.contains("\r\n\r\nsecond\r\n"));
    }
};

KOLM_TEST_MAIN(TestHttpUpload)
#include "tst_http_upload.moc"
