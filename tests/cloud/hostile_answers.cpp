#include "tests/cloud/hostile_answers.h"

#include <QTest>

namespace {

QByteArray repeated(const QByteArray &text, int count)
{
    return text.repeated(count);
}

QByteArray versionWith(const QByteArray &members)
{
    return "{\"errCode\":0,\"data\":{" + members + "}}";
}

QByteArray urlOf(const QByteArray &url)
{
    return versionWith("\"version\":\"9.9.9.9\",\"note\":\"n\",\"url\":\"" + url + "\"");
}

QJsonObject raw(const QByteArray &bytes)
{
    return {{"raw", QString::fromLatin1(bytes.toBase64())}};
}

void addBodies()
{
    const auto row = [](const char *title, const QByteArray &bytes, Outcome outcome) {
        QTest::newRow(title) << body(bytes) << outcome;
    };
    row("one brace", "{", NotJson);
    row("text", "OK", NotJson);
    row("a NUL", QByteArray(1, '\0'), NotJson);
    row("a thousand NULs", QByteArray(1000, '\0'), NotJson);
    row("blanks", QByteArray(1000, ' '), NotJson);
    row("true", "true", NotJson);
    row("null", "null", NotJson);
    row("a number", "1", NotJson);
    row("a string", "\"errCode\"", NotJson);
    row("two objects", "{}{}", NotJson);
    row("object and rubbish", "{\"errCode\":0}x", NotJson);
    row("a comma too many", "{\"errCode\":0,}", NotJson);
    row("single quotes", "{'errCode':0}", NotJson);
    row("no quotes", "{errCode:0}", NotJson);
    row("a comment", "/**/{\"errCode\":0}", NotJson);
    row("truncated", "{\"errCode\":0,\"data\":{\"version\":\"9.9.9.9\"", NotJson);
    row("truncated in a string", "{\"errCode\":0,\"da", NotJson);
    row("truncated escape", "{\"errMsg\":\"\\u12", NotJson);
    row("not a number", "{\"errCode\":NaN}", NotJson);
    row("infinite", "{\"errCode\":Infinity}", NotJson);
    row("hexadecimal", "{\"errCode\":0x10}", NotJson);
    row("UTF-16", QByteArray::fromHex("fffe7b007d00"), NotJson);
    row("invalid UTF-8", "{\"errMsg\":\"\xff\xfe\x80\"}", NotJson);
    row("overlong UTF-8", "{\"errMsg\":\"\xc0\x80\"}", NotJson);
    row("cut UTF-8", "{\"errMsg\":\"\xe4\xb8\"}", NotJson);
    row("a lone surrogate in UTF-8", "{\"errMsg\":\"\xed\xa0\x80\"}", NotJson);
    row("deep arrays", repeated("[", 100000), NotJson);
    row("deep objects", repeated("{\"a\":", 100000), NotJson);
    row("deep and closed", repeated("[", 5000) + repeated("]", 5000), NotJson);
    row("binary", QByteArray::fromHex("89504e470d0a1a0a0000000d"), NotJson);
    row("an empty array", "[]", Silent);
    row("an array", "[{\"errCode\":1}]", Silent);
    row("an empty object", "{}", Silent);
    row("only rubbish members", "{\"a\":1,\"b\":[2],\"\":null}", Silent);
    row("byte order mark", "\xef\xbb\xbf{}", Silent);
    row("errCode null", "{\"errCode\":null}", Silent);
    row("errCode true", "{\"errCode\":true}", Silent);
    row("errCode text", "{\"errCode\":\"7\"}", Silent);
    row("errCode object", "{\"errCode\":{}}", Silent);
    row("errCode array", "{\"errCode\":[1]}", Silent);
    row("errCode half", "{\"errCode\":0.5}", Silent);
    row("errCode huge", "{\"errCode\":1e300}", Silent);
    row("errCode beyond", "{\"errCode\":123456789012345678901234567890}", Silent);
    row("errCode minus zero", "{\"errCode\":-0}", Silent);
    row("errCode negative", "{\"errCode\":-1}", Refused);
    row("errCode one", "{\"errCode\":1.0}", Refused);
    row("errCode largest", "{\"errCode\":2147483647}", Refused);
    row("errCode twice", "{\"errCode\":0,\"errCode\":5}", Refused);
    row("errMsg a number", "{\"errCode\":2,\"errMsg\":3}", Refused);
    row("errMsg an object", "{\"errCode\":2,\"errMsg\":{\"a\":[]}}", Refused);
    row("errMsg with NUL", "{\"errCode\":2,\"errMsg\":\"a\\u0000b\"}", Refused);
    row("errMsg with places to fill", "{\"errCode\":2,\"errMsg\":\"%1 %n %s\"}", Refused);
    row("errMsg long", "{\"errCode\":2,\"errMsg\":\"" + QByteArray(200000, 'm') + "\"}", Refused);
    row("a lone surrogate", "{\"errCode\":2,\"errMsg\":\"\\ud800\"}", Refused);
    row(
        "many members",
        [] {
            QByteArray text = "{\"errCode\":0";
            for (int i = 0; i < 5000; ++i)
                text += ",\"k" + QByteArray::number(i) + "\":" + QByteArray::number(i);
            return text + "}";
        }(),
        Silent);
    row("data null", "{\"errCode\":0,\"data\":null}", Silent);
    row("data text", "{\"errCode\":0,\"data\":\"9.9.9.9\"}", Silent);
    row("data array", "{\"errCode\":0,\"data\":[{\"version\":\"9.9.9.9\"}]}", Silent);
    row("data empty", "{\"errCode\":0,\"data\":{}}", Silent);
    row("version number", versionWith("\"version\":9.9"), Silent);
    row("version null", versionWith("\"version\":null"), Silent);
    row("version array", versionWith("\"version\":[9,9,9,9]"), Silent);
    row("version empty", versionWith("\"version\":\"\""), Silent);
    row("version huge numbers", versionWith("\"version\":\"99999999999999999999.9.9.9\""), Silent);
    row("version of dots", versionWith("\"version\":\"" + QByteArray(100000, '.') + "\""), Silent);
    row("version long", versionWith("\"version\":\"" + QByteArray(100000, '0') + "\""), Silent);
    row("version with NUL", versionWith("\"version\":\"9\\u0000.9.9.9\""), Silent);
    row("no url", versionWith("\"version\":\"9.9.9.9\""), Silent);
    row("url number", versionWith("\"version\":\"9.9.9.9\",\"url\":7"), Silent);
    row("url empty", urlOf(""), Silent);
    row("url relative", urlOf("download/x.exe"), Silent);
    row("url only a path", urlOf("/download/x.exe"), Silent);
    row("url of a file", urlOf("file:///etc/passwd"), Silent);
    row("url of a Windows file", urlOf("file:///C:/Windows/notepad.exe"), Silent);
    row("url of a resource", urlOf("qrc:/qml/mainWindow.qml"), Silent);
    row("url of data", urlOf("data:application/octet-stream;base64,TVo="), Silent);
    row("url of ftp", urlOf("ftp://127.0.0.1:1/x.exe"), Silent);
    row("url of a script", urlOf("javascript:alert(1)"), Silent);
    row("url without host", urlOf("https:///x.exe"), Silent);
    row("url with a bad port", urlOf("https://127.0.0.1:99999/x.exe"), Silent);
    row("url to nobody", urlOf("https://127.0.0.1:1/x.exe"), Silent);
    row("url broken", urlOf("https://[::1/x.exe"), Silent);
    row("url of one percent", urlOf("https://127.0.0.1:1/%"), Silent);
    row("url long", urlOf("https://127.0.0.1:1/" + QByteArray(100000, 'u')), Silent);
    row("note an object",
        versionWith("\"version\":\"9.9.9.9\",\"note\":{},\"url\":\"https://127.0.0.1:1/x\""),
        Silent);
    row("note of line breaks",
        versionWith("\"version\":\"9.9.9.9\",\"note\":\"" + repeated("/n", 50000) +
                    "\",\"url\":\"https://127.0.0.1:1/x\""),
        Silent);
}

} // namespace

QJsonObject body(const QByteArray &bytes, const QJsonObject &rest)
{
    QJsonObject answer = rest;
    answer["base64"] = QString::fromLatin1(bytes.toBase64());
    return answer;
}

QByteArray bomb()
{
    static const QByteArray packed = qCompress(QByteArray(256 << 20, ' '), 9).mid(4);
    return packed;
}

void addTransfers()
{
    const auto row = [](const char *title, const QJsonObject &answer, Outcome outcome) {
        QTest::newRow(title) << answer << outcome;
    };
    row("endless", body("{\"errCode\":0}", {{"endless", true}}), NotJson);
    row("endless blanks", body(QByteArray(65536, ' '), {{"endless", true}}), NotJson);
    row("endless brackets", body(QByteArray(65536, '['), {{"endless", true}}), NotJson);
    row("endless chunks", body(QByteArray(1000, 'x'), {{"endless", true}, {"chunked", true}}),
        NotJson);
    row("40 MB", {{"size", 40 << 20}}, NotJson);
    row("40 MB without length", {{"size", 40 << 20}, {"length", false}}, NotJson);
    row("cut", body("{\"errCode\":0}", {{"cutAfter", 5}}), NotJson);
    row("cut at once", body("{\"errCode\":0}", {{"cutAfter", 0}}), NotJson);
    row("cut chunks", body("{\"errCode\":0}", {{"cutAfter", 5}, {"chunked", true}}), NotJson);
    row("status 204", {{"status", 204}, {"body", ""}}, NotJson);
    row("status 304", {{"status", 304}, {"body", ""}}, NotJson);
    row("status 401",
        {{"status", 401},
         {"headers", QJsonObject{{"WWW-Authenticate", "Basic realm=\"r\""}}},
         {"body", "no"}},
        NotJson);
    row("status 407", {{"status", 407}, {"body", "no"}}, NotJson);
    row("status 418", {{"status", 418}, {"body", "no"}}, NotJson);
    row("status 999", {{"status", 999}, {"body", "no"}}, NotJson);
    row("to itself", {{"status", 302}, {"headers", QJsonObject{{"Location", "/"}}}, {"body", "no"}},
        NotJson);
    row("no HTTP", raw("hello"), NotJson);
    row("another protocol", raw("SSH-2.0-OpenSSH_9.2\r\n"), NotJson);
    row("a head without an end", raw("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n"), NotJson);
    row("a length below zero", raw("HTTP/1.1 200 OK\r\nContent-Length: -5\r\n\r\nhello"), NotJson);
    row("a length that is none", raw("HTTP/1.1 200 OK\r\nContent-Length: many\r\n\r\nhello"),
        NotJson);
    row("two lengths",
        raw("HTTP/1.1 200 OK\r\nContent-Length: 5\r\nContent-Length: 99\r\n\r\nhello"), NotJson);
    row("a length beyond all",
        raw("HTTP/1.1 200 OK\r\nContent-Length: 99999999999999999999\r\n\r\nhello"), NotJson);
    row("a chunk beyond all",
        raw("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nffffffffffffffff\r\nhello"),
        NotJson);
    row("a chunk that is none",
        raw("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\nhello\r\n"), NotJson);
    row("not packed", body("hello", {{"headers", QJsonObject{{"Content-Encoding", "gzip"}}}}),
        NotJson);
    row("many headers",
        raw("HTTP/1.1 200 OK\r\n" + repeated("X-A: b\r\n", 20000) + "Content-Length: 2\r\n\r\n[x"),
        NotJson);
    row("a long header",
        raw("HTTP/1.1 200 OK\r\nX-A: " + QByteArray(1 << 20, 'h') +
            "\r\nContent-Length: 2\r\n\r\n[x"),
        NotJson);
    row("a head without bounds",
        body(repeated("X-A: b\r\n", 8000),
             {{"endless", true}, {"raw", raw("HTTP/1.1 200 OK\r\n")["raw"]}}),
        NotJson);
    row("a header without bounds",
        body(QByteArray(65536, 'h'),
             {{"endless", true}, {"raw", raw("HTTP/1.1 200 OK\r\nX-A: ")["raw"]}}),
        NotJson);
    row("a status line without bounds",
        body(QByteArray(65536, 'h'), {{"endless", true}, {"raw", raw("HTTP/1.1 200 O")["raw"]}}),
        NotJson);
    row("interim heads without bounds",
        body(repeated("HTTP/1.1 100 Continue\r\n\r\n", 2000),
             {{"endless", true}, {"raw", raw("HTTP/1.1 100 Continue\r\n\r\n")["raw"]}}),
        NotJson);
    row("a NUL in a header",
        raw("HTTP/1.1 200 OK\r\nX: " + QByteArray(1, '\0') + "\r\nContent-Length: 2\r\n\r\n[x"),
        NotJson);
}

void addAnswers()
{
    QTest::addColumn<QJsonObject>("answer");
    QTest::addColumn<Outcome>("outcome");
    addBodies();
    addTransfers();
    QTest::newRow("packed a thousand times")
        << body(bomb(), {{"headers", QJsonObject{{"Content-Encoding", "deflate"}}}}) << NotJson;
}
