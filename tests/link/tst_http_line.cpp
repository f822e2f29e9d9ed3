#include "link/http_line.h"
#include "tests/support/test_case.h"

class HttpLineTest : public TestCase
{
    Q_OBJECT

private slots:
    void tellsABrowsersLines_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<bool>("is");
        const auto row = [](const QByteArray &line, bool is) {
            QTest::newRow(line.left(60).toPercentEncoding(" /:").constData()) << line << is;
        };
        for (const char *method : {"GET", "HEAD", "POST", "PUT", "DELETE", "CONNECT", "OPTIONS",
                                   "TRACE", "PATCH", "PROPFIND"})
            row(method + QByteArray(" / HTTP/1.1\r"), true);
        row("POST ", true);
        row("POST / HTTP", true);
        row("GET /" + QByteArray(5000, 'x'), true);
        row("PRI * HTTP/2.0\r", true);
        row("ANYTHING http://localhost:9932/ HTTP/1.1\r", true);
        row("x / HTTP/1.0", true);
        for (const char *header :
             {"Host: 127.0.0.1:9932\r", "host:127.0.0.1", "User-Agent: Mozilla/5.0 (X)\r",
              "Origin: null\r", "Content-Type: text/plain\r", "content-length: 5", "Accept: */*",
              "Accept-Language: de", "Sec-Fetch-Mode: no-cors", "sec-ch-ua-platform: \"Windows\"",
              "Sec-WebSocket-Key: x", "Connection: keep-alive", "Referer: http://x/", "Cookie: a=b",
              "Upgrade-Insecure-Requests: 1", "Upgrade: x", "If-None-Match: x",
              "Access-Control-Request-Method: POST", "Proxy-Connection: x"})
            row(header, true);
        row("\x16\x03\x01\x02", true);
        row("\x16\x03", true);

        for (const char *line : {"",
                                 "\r",
                                 "Hello",
                                 "Hello\r",
                                 "RESTARTSTEAMVR",
                                 "DeviceConnectBack\ttrue",
                                 "HMDINFOBACK",
                                 "HMDINFOBACK\tdeviceId:D3A~D3A;10.0.0.7;true;x",
                                 "HMDINFOBACK\tS;N;true;x HTTP/1.1",
                                 "HMDINFOBACK\tHost: x~GET / HTTP/1.1",
                                 "deviceId:D3A",
                                 "P",
                                 "POST",
                                 "POST\t/ HTTP/1.1",
                                 "post / something",
                                 "Posted x",
                                 "GETTING ready",
                                 "Get well",
                                 "HeadsetState: ok",
                                 "Hostess: x",
                                 "Host",
                                 "Sec-",
                                 "If-only we knew",
                                 "Sec: x",
                                 " HTTP/1.1",
                                 "two words",
                                 "HTTP/1.1",
                                 "\x16",
                                 "\x03"})
            row(line, false);
        row(QByteArray(100, 'x') + " / HTTP/1.1", false);
        row("x / HTTP/11", false);
        row("\xE5\xA4\xB4 / HTTP/1.1", false);
    }
    void tellsABrowsersLines()
    {
        QFETCH(QByteArray, line);
        QTEST(http_line::isBrowsers({line.constData(), static_cast<std::size_t>(line.size())}),
              "is");
    }

    // Whatever names the list does not know.
    void noBeginningOfACommandIsABrowsers()
    {
        for (const std::string command :
             {"DeviceConnectBack\ttrue", "HMDINFOBACK\tdeviceId:Host: x~S;10.0.0.7;true;x",
              "RESTARTSTEAMVR", "Hello"}) {
            for (std::size_t size = 0; size <= command.size(); ++size)
                QVERIFY2(!http_line::isBrowsers(std::string_view(command).substr(0, size)),
                         command.c_str());
        }
    }
};

KOLM_TEST_MAIN(HttpLineTest)
#include "tst_http_line.moc"
