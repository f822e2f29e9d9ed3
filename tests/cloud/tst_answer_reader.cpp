#include "cloud/answer_reader.h"
#include "tests/support/test_case.h"

using State = AnswerReader::State;

namespace {

QByteArray repeated(const QByteArray &text, int times)
{
    QByteArray all;
    all.reserve(text.size() * times);
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

} // namespace

class TestAnswerReader : public TestCase
{
    Q_OBJECT

private slots:
    void anAnswerIsTakenApart_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("state"); // when nothing more comes
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        const auto row = [](const char *title, const QByteArray &bytes, State state, int status,
                            const QByteArray &body) {
            QTest::newRow(title) << bytes << int(state) << status << body;
        };
        const QByteArray ok = "HTTP/1.1 200 OK\r\n";
        const QByteArray chunked = ok + "transfer-encoding: Chunked\r\n\r\n";
        row("counted", ok + "Content-Length: 5\r\n\r\nhello", State::Done, 200, "hello");
        row("more than counted", ok + "Content-Length: 2\r\n\r\nhello", State::Done, 200, "he");
        row("cut", ok + "Content-Length: 9\r\n\r\nhello", State::Broken, 200, "hello");
        row("to the end", ok + "\r\nhello", State::Done, 200, "hello");
        row("nothing to the end", ok + "\r\n", State::Done, 200, "");
        row("empty", ok + "Content-Length: 0\r\n\r\n", State::Done, 200, "");
        row("old protocol", "HTTP/1.0 200\r\n\r\nx", State::Done, 200, "x");
        row("line feeds alone", "HTTP/1.1 404 No\nContent-Length:1\n\nx", State::Done, 404, "x");
        row("204", "HTTP/1.1 204 None\r\nContent-Length: 5\r\n\r\n", State::Done, 204, "");
        row("304", "HTTP/1.1 304 Same\r\n\r\n", State::Done, 304, "");
        row("interim", "HTTP/1.1 100 Continue\r\nContent-Length: 9\r\n\r\n" + ok + "\r\nx",
            State::Done, 200, "x");
        row("chunks", chunked + "3\r\nabc\r\nA;x=y\r\n0123456789\r\n0\r\n\r\n", State::Done, 200,
            "abc0123456789");
        row("trailer", chunked + "1\r\na\r\n0\r\nX: y\r\n\r\nmore", State::Done, 200, "a");
        row("chunks and a length",
            ok + "Content-Length: 1\r\nTransfer-Encoding: chunked\r\n\r\n" + "2\r\nab\r\n0\r\n\r\n",
            State::Done, 200, "ab");
        row("cut chunk", chunked + "5\r\nab", State::Broken, 200, "ab");
        row("chunks without an end", chunked + "2\r\nab\r\n", State::Broken, 200, "ab");
        row("a chunk that is longer", chunked + "2\r\nabc\r\n", State::Broken, 200, "ab");
        row("a chunk below zero", chunked + "-2\r\nab", State::Broken, 200, "");
        row("a chunk beyond all", chunked + "ffffffffffffffff\r\nab", State::Broken, 200, "");
        row("a chunk of no number", chunked + "zz\r\nab", State::Broken, 200, "");
        row("a chunk of no size", chunked + "\r\nab", State::Broken, 200, "");
        row("unknown coding", ok + "Transfer-Encoding: gzip\r\n\r\nx", State::Broken, 0, "");
        row("length below zero", ok + "Content-Length: -5\r\n\r\nx", State::Broken, 0, "");
        row("length with a sign", ok + "Content-Length: +1\r\n\r\nx", State::Broken, 0, "");
        row("length of no number", ok + "Content-Length: many\r\n\r\nx", State::Broken, 0, "");
        row("two lengths", ok + "Content-Length: 1\r\nContent-Length: 2\r\n\r\nxx", State::Broken,
            0, "");
        row("the same length twice", ok + "Content-Length: 1\r\nContent-Length: 1\r\n\r\nx",
            State::Done, 200, "x");
        row("nothing", "", State::Broken, 0, "");
        row("half a status line", "HTTP/1.1 20", State::Broken, 0, "");
        row("head without an end", ok + "X: y\r\n", State::Broken, 0, "");
        row("another protocol", "SSH-2.0-x\r\n\r\n", State::Broken, 0, "");
        row("no status", "HTTP/1.1 OK\r\n\r\n", State::Broken, 0, "");
        row("long status", "HTTP/1.1 2000 OK\r\n\r\n", State::Broken, 0, "");
        row("a head that just fits", ok + "X: " + QByteArray((1 << 16) - 24, 'x') + "\r\n\r\nx",
            State::Done, 200, "x");
        row("a head that does not", ok + "X: " + QByteArray((1 << 16) - 23, 'x') + "\r\n\r\nx",
            State::Broken, 0, "");
        row("interim without end", repeated("HTTP/1.1 100 Continue\r\n\r\n", 5000) + ok + "\r\nx",
            State::Broken, 0, "");
        row("long line of a chunk", chunked + "1;" + QByteArray(1000, 'x') + "\r\na", State::Broken,
            200, "");
        row("long trailer", chunked + "0\r\n" + repeated("X: y\r\n", 20000) + "\r\n", State::Broken,
            200, "");
    }

    void anAnswerIsTakenApart()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, status);
        for (const int piece : {1, 7, 1 << 20}) {
            AnswerReader reader;
            QByteArray body;
            for (int at = 0; at < bytes.size(); at += piece)
                body += reader.feed(bytes.mid(at, piece));
            reader.end();
            QTEST(int(reader.state()), "state");
            QTEST(body, "body");
            if (status != 0)
                QCOMPARE(reader.status(), status);
        }
    }

    void theHeadSaysWhatIsToCome()
    {
        AnswerReader reader;
        QCOMPARE(reader.feed("HTTP/1.1 500 Out of order\r\nContent-Length: 7\r\n\r"), QByteArray());
        QCOMPARE(reader.state(), State::Head);
        reader.feed("\n");
        QCOMPARE(reader.state(), State::Body);
        QCOMPARE(reader.reason(), QByteArray("Out of order"));
        QCOMPARE(reader.length(), 7);
    }

    void whatIsBrokenStaysSo()
    {
        AnswerReader reader;
        reader.feed("nonsense\r\n");
        QCOMPARE(reader.feed("HTTP/1.1 200 OK\r\n\r\nx"), QByteArray());
        reader.end();
        QCOMPARE(reader.state(), State::Broken);
    }
};

KOLM_TEST_MAIN(TestAnswerReader)
#include "tst_answer_reader.moc"
