#include "tests/hostile/attacked.h"
#include "tests/support/test_case.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

// A web page in a genuine browser.
class TestHostileWebPage : public TestCase
{
    Q_OBJECT

    // Has the browser load the page, and waits until it has been turned away.
    bool browse(const QString &browser, const QByteArray &page, const Program &program)
    {
        writeFile("page.html", page);
        QProcess process;
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        // With the last one it stays until it is ended.
        process.start(browser, {"--headless", "--no-sandbox", "--disable-gpu", "--no-first-run",
                                "--user-data-dir=" + path("browser"), "--remote-debugging-port=0",
                                "file://" + QUrl::toPercentEncoding(path("page.html"), "/")});
        QElapsedTimer timer;
        timer.start();
        const auto turnedAway = [&] {
            return program.log().contains("a connection that speaks HTTP is closed");
        };
        while (!turnedAway() && timer.elapsed() < 60000)
            process.waitForFinished(50);
        process.terminate();
        if (!process.waitForFinished(20000))
            process.kill();
        process.waitForFinished();
        return turnedAway();
    }

private slots:
    void obeysNothingOfThePage_data()
    {
        QTest::addColumn<QByteArray>("attack");
        QTest::newRow("fetch") << QByteArray(
            "for (let i = 0; i < 5; ++i)"
            "  fetch(url, {method: 'POST', mode: 'no-cors', body: commands}).catch(() => {});");
        QTest::newRow("beacon") << QByteArray("navigator.sendBeacon(url, commands);");
        QTest::newRow("image") << QByteArray("new Image().src = url + encodeURI(commands);");
        QTest::newRow("WebSocket") << QByteArray("const s = new WebSocket(url.replace('http', "
                                                 "'ws')); s.onopen = () => s.send(commands);");
        QTest::newRow("form") << QByteArray(
            "const f = document.createElement('form'); f.method = 'POST'; f.action = url;"
            "f.enctype = 'text/plain'; f.target = 'frame';"
            "const t = document.createElement('textarea'); t.name = commands; t.value = commands;"
            "f.appendChild(t); document.body.appendChild(f); f.submit();");
        QTest::newRow("question first")
            << QByteArray("fetch(url, {method: 'PUT', headers: {'X-Evil': '1'}, body: "
                          "commands}).catch(() => {});");
        QTest::newRow("HTTPS") << QByteArray(
            "fetch(url.replace('http', 'https'), {method: 'POST', mode: 'no-cors', body: commands})"
            "  .catch(() => {});");
    }
    void obeysNothingOfThePage()
    {
        QFETCH(QByteArray, attack);
        const QString browser = QStandardPaths::findExecutable("chromium");
        if (browser.isEmpty())
            QSKIP("there is no chromium");
        Attacked here(dir());
        QVERIFY(here.started);
        QVERIFY(browse(
            browser,
            "<body><iframe name='frame'></iframe><script>const url = 'http://127.0.0.1:9932/';"
            "const commands = 'RESTARTSTEAMVR\\n'.repeat(9) + 'HMDINFOBACK\\tdeviceId:D3EVIL~"
            "D3EVIL;10.0.0.66;true;x\\nDeviceConnectBack\\ttrue\\nHello\\n';" +
                attack + "</script></body>",
            here.program));
        QVERIFY(here.answers());
        QVERIFY(here.millisecondsToClose() >= 0);
        QCOMPARE(here.restarts(), 0);
        QVERIFY(!here.knowsEvilHeadset());
    }
};

KOLM_TEST_MAIN(TestHostileWebPage)
#include "tst_hostile_web_page.moc"
