#include "link/line_splitter.h"
#include "tests/support/test_case.h"

using Lines = std::vector<std::string>;
Q_DECLARE_METATYPE(Lines)

class LineSplitterTest : public TestCase
{
    Q_OBJECT

private slots:
    void cutsChunksIntoLines_data()
    {
        QTest::addColumn<Lines>("chunks");
        QTest::addColumn<Lines>("lines");
        QTest::addColumn<int>("unfinished");
        using namespace std::string_literals;

        QTest::newRow("nothing") << Lines{} << Lines{} << 0;
        QTest::newRow("empty chunk") << Lines{""} << Lines{} << 0;
        QTest::newRow("one line") << Lines{"Hello\n"} << Lines{"Hello"} << 0;
        QTest::newRow("a line and a half, the other half later")
            << Lines{"Hello\nHel", "lo\n"} << Lines{"Hello", "Hello"} << 0;
        QTest::newRow("half a line") << Lines{"Hel"} << Lines{} << 3;
        QTest::newRow("carriage return stays") << Lines{"A\r\n"} << Lines{"A\r"} << 0;
        QTest::newRow("carriage return alone ends nothing") << Lines{"A\rB"} << Lines{} << 3;
        QTest::newRow("a lone line feed is an empty line") << Lines{"\n"} << Lines{""} << 0;
        QTest::newRow("several empty lines") << Lines{"\n\n", "\n"} << Lines{"", "", ""} << 0;
        QTest::newRow("line feed in a chunk of its own")
            << Lines{"Hello", "\n"} << Lines{"Hello"} << 0;
        QTest::newRow("NUL drops the rest of its chunk")
            << Lines{"ab\0cd\nef\n"s, "gh\n"} << Lines{"abgh"} << 0;
        QTest::newRow("NUL after a line") << Lines{"ab\n\0cd\n"s} << Lines{"ab"} << 0;
        QTest::newRow("NUL first") << Lines{"\0ab\n"s, "cd\n"} << Lines{"cd"} << 0;
        QTest::newRow("NUL between line and line feed")
            << Lines{"ab\0\n"s, "\n"} << Lines{"ab"} << 0;
        QTest::newRow("only NUL bytes") << Lines{std::string(999, '\0')} << Lines{} << 0;
        QTest::newRow("tabs and high bytes pass")
            << Lines{"a\tb\xff\x80\n"} << Lines{"a\tb\xff\x80"} << 0;
    }

    void cutsChunksIntoLines()
    {
        QFETCH(Lines, chunks);
        QFETCH(Lines, lines);
        QFETCH(int, unfinished);

        LineSplitter splitter;
        Lines seen;
        for (const std::string &chunk : chunks)
            QVERIFY(splitter.append(chunk.data(), chunk.size(), &seen));
        QVERIFY(seen == lines);
        QCOMPARE(splitter.unfinished(), static_cast<std::size_t>(unfinished));
    }

    void cutsTheSameWhereverTheChunksEnd()
    {
        const std::string stream = "Hello\n\nHMDINFOBACK\ta;b;c;d\r\nx\n";
        const Lines expected{"Hello", "", "HMDINFOBACK\ta;b;c;d\r", "x"};
        for (std::size_t size = 1; size <= stream.size(); ++size) {
            LineSplitter splitter;
            Lines lines;
            for (std::size_t at = 0; at < stream.size(); at += size)
                QVERIFY(splitter.append(stream.data() + at, std::min(size, stream.size() - at),
                                        &lines));
            QVERIFY2(lines == expected, qPrintable(QString::number(size)));
        }
    }

    void addsToTheLinesThatAreThere()
    {
        LineSplitter splitter;
        Lines lines{"before"};
        QVERIFY(splitter.append("after\n", 6, &lines));
        QVERIFY(lines == (Lines{"before", "after"}));
    }

    void forgetsTheUnfinishedLineWhenCleared()
    {
        LineSplitter splitter;
        Lines lines;
        QVERIFY(splitter.append("old", 3, &lines));
        splitter.clear();
        QCOMPARE(splitter.unfinished(), std::size_t(0));
        QVERIFY(splitter.append("new\n", 4, &lines));
        QVERIFY(lines == Lines{"new"});
    }

    void saysWhenALineGrowsTooLong()
    {
        LineSplitter splitter(8);
        Lines lines;
        QVERIFY(splitter.append("12345678", 8, &lines));
        QVERIFY(!splitter.append("9", 1, &lines));
        QVERIFY(lines.empty());
        splitter.clear();
        QVERIFY(splitter.append("1", 1, &lines));
    }

    void takesALineOfExactlyTheLimit()
    {
        LineSplitter splitter(8);
        Lines lines;
        QVERIFY(splitter.append("12345678", 8, &lines));
        QVERIFY(splitter.append("\n", 1, &lines));
        QVERIFY(lines == Lines{"12345678"});
    }

    void allowsOneMebibyte()
    {
        LineSplitter splitter;
        Lines lines;
        const std::string mebibyte(1048576, 'x');
        QVERIFY(splitter.append(mebibyte.data(), mebibyte.size(), &lines));
        QVERIFY(!splitter.append("x", 1, &lines));
    }

    // Looking at old bytes again for every chunk, or moving the rest for every
    // line, would take minutes here.
    void isLinearInALongLine()
    {
        LineSplitter splitter(100000000);
        Lines lines;
        const std::string chunk(10, 'x');
        for (int i = 0; i < 1000000; ++i)
            QVERIFY(splitter.append(chunk.data(), chunk.size(), &lines));
        QVERIFY(splitter.append("\n", 1, &lines));
        QCOMPARE(lines.size(), std::size_t(1));
        QCOMPARE(lines[0].size(), std::size_t(10000000));
    }

    void isLinearInManyLines()
    {
        LineSplitter splitter;
        Lines lines;
        const QByteArray feeds(10000000, '\n');
        QVERIFY(splitter.append(feeds.constData(), static_cast<std::size_t>(feeds.size()), &lines));
        QCOMPARE(lines.size(), static_cast<std::size_t>(feeds.size()));
    }
};

KOLM_TEST_MAIN(LineSplitterTest)
#include "tst_line_splitter.moc"
