#include "tests/hostile/cloud_attacks.h"

#include <QJsonObject>
#include <QTest>

namespace {

QJsonObject raw(const QByteArray &bytes, QJsonObject rest = {})
{
    rest["raw"] = QString::fromLatin1(bytes.toBase64());
    return rest;
}

QJsonObject everywhere(const QJsonObject &answer)
{
    return {{"table", answer}, {"version", answer}, {"events", answer}};
}

QJsonObject offer(const QString &url, const QJsonObject &installer = {{"size", 1000}})
{
    const QJsonObject data{{"version", "9.9.9.9"}, {"note", "n"}, {"url", url}};
    return {{"table", QJsonObject{{"body", "{}"}}},
            {"version", QJsonObject{{"json", QJsonObject{{"errCode", 0}, {"data", data}}}}},
            {"events", QJsonObject{{"json", QJsonObject{{"errCode", 0}}}}},
            {"installer", installer}};
}

} // namespace

void addCloudAttacks()
{
    QTest::addColumn<QJsonObject>("answers");
    QTest::addColumn<QString>("end");
    const auto row = [](const char *title, const QJsonObject &answers) {
        const bool isOffer = answers.contains("installer");
        QTest::newRow(title) << answers << (isOffer ? "start update" : "pc_compare.json failed: ");
    };
    const QByteArray start = "HTTP/1.1 200 OK\r\n";
    const QString lines = QString("X-A: b\r\n").repeated(8000);
    row("a head without bounds", everywhere(raw(start, {{"endless", true}, {"body", lines}})));
    row("a header without bounds",
        everywhere(raw(start + "X: ", {{"endless", true}, {"body", QString(65536, 'x')}})));
    row("interim heads without bounds",
        everywhere(
            raw("HTTP/1.1 100 C\r\n\r\n",
                {{"endless", true}, {"body", QString("HTTP/1.1 100 C\r\n\r\n").repeated(3000)}})));
    row("a body without bounds", everywhere({{"endless", true}, {"body", QString(65536, '[')}}));
    row("chunks without bounds",
        everywhere({{"endless", true}, {"chunked", true}, {"body", QString(65536, '[')}}));
    row("no answer", everywhere(raw("\r\n")));
    row("half a status line", everywhere(raw("HTTP/1.1 20")));
    row("a length beyond all",
        everywhere(raw(start + "Content-Length: 99999999999999999999\r\n\r\nx")));
    row("a script", offer("{base}/download/update.bat"));
    row("a link", offer("{base}/download/update.exe.lnk"));
    row("an installer up the folders", offer("{base}/download/..%2F..%2Fcompare.json"));
    row("an installer in a stream", offer("{base}/download/log.txt%3Aa.exe%3Ab"));
    row("a local file", offer("file:///etc/passwd.exe"));
    row("an installer without an end", offer("{base}/download/Setup.exe", raw("HTTP/1.1 20")));
    row("an installer that breaks off",
        offer("{base}/download/Setup.exe", {{"size", 300000}, {"cutAfter", 1000}}));
    QTest::newRow("a redirect to itself")
        << everywhere({{"status", 302}, {"headers", QJsonObject{{"Location", "{base}/"}}}})
        << "Request was redirected.";
}
