#include "base/json_document.h"
#include "tests/support/test_case.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

QByteArray roundTrip(const QByteArray &text)
{
    return toIndented(parseJson(text));
}

// `{"n": token}` in the indented layout.
QByteArray documentOf(const QByteArray &token)
{
    return "{\n    \"n\": " + token + "\n}\n";
}

} // namespace

class TestJsonDocument : public TestCase
{
    Q_OBJECT

private slots:
    void aLongNumberComesBackDigitByDigit_data()
    {
        QTest::addColumn<QByteArray>("token");
        const char *const tokens[] = {
            "9007199254740993",
            "9223372036854775807",
            "-9223372036854775808",
            "18446744073709551615",
            "1234567890123456",
            "76561198000000001",
            "123456789012345678901234567890",
            "0.30000000000000004",
            "0.1000000000000000055511151231257827",
            "3.14159265358979323846",
            "-3.14159265358979323846e-10",
            "1.7976931348623157e308",
            "4.9406564584124654e-324",
            "1e400",
            "1E+400",
            "-1e-400",
            "1e99999999999999999999999",
            "1e-99999999999999999999999",
            "1.0000000000000001",
            "1000000000000000.5",
        };
        for (const char *token : tokens)
            QTest::newRow(token) << QByteArray(token);
    }

    void aLongNumberComesBackDigitByDigit()
    {
        QFETCH(QByteArray, token);

        QCOMPARE(roundTrip("{\"n\":" + token + "}"), documentOf(token));
        QCOMPARE(roundTrip("[" + token + "," + token + "]"),
                 "[\n    " + token + ",\n    " + token + "\n]\n");
        // Blanks and line breaks around it change nothing.
        QCOMPARE(roundTrip("{\"n\" :\r\n\t" + token + "\r\n }"), documentOf(token));
    }

    void anOrdinaryNumberIsReadAsOneAndKeepsItsValue_data()
    {
        QTest::addColumn<QByteArray>("token");
        QTest::addColumn<QByteArray>("written");
        const char *const rows[][2] = {
            {"0", "0"},
            {"-0", "0"},
            {"7", "7"},
            {"-1", "-1"},
            {"72.0", "72"},
            {"90", "90"},
            {"1.50", "1.5"},
            {"0.1", "0.1"},
            {"0.9", "0.9"},
            {"1e3", "1000"},
            {"1E3", "1000"},
            {"2.5e+2", "250"},
            {"25e-1", "2.5"},
            {"0.000001", "1e-06"},
            {"123456789012345", "123456789012345"},
            {"-99999999999.9999", "-99999999999.9999"},
            {"1500000000000000000000", "1.5e+21"},
            {"0.0000000000000000000000012", "1.2e-24"},
            {"1.00000000000000000000000000000", "1"},
            {"9.87654321098765e+290", "9.87654321098765e+290"},
            {"1.23456789012345e-290", "1.23456789012345e-290"},
        };
        for (const auto &row : rows)
            QTest::newRow(row[0]) << QByteArray(row[0]) << QByteArray(row[1]);
    }

    void anOrdinaryNumberIsReadAsOneAndKeepsItsValue()
    {
        QFETCH(QByteArray, token);
        QFETCH(QByteArray, written);

        const JsonDocument json = parseJson("{\"n\":" + token + "}");
        const QJsonValue number = json.document.object().value(QStringLiteral("n"));

        QVERIFY(json.ok());
        QVERIFY(number.isDouble());
        QCOMPARE(number.toDouble(), token.toDouble());
        QCOMPARE(written.toDouble(), token.toDouble());
        QCOMPARE(toIndented(json), documentOf(written));
    }

    void aTextThatIsNoJsonIsAnError_data()
    {
        QTest::addColumn<QByteArray>("text");
        const char *const longNumber = "12345678901234567890";
        const auto add = [](const QByteArray &text) { QTest::newRow(text.constData()) << text; };
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("only a byte order mark") << QByteArray("\xef\xbb\xbf");
        QTest::newRow("a null byte") << QByteArray("\0", 1);
        QTest::newRow("a null byte behind the end") << QByteArray("{}\0", 3);
        QTest::newRow("invalid UTF-8 in a string") << QByteArray("{\"a\":\"\xff\xfe\"}");
        QTest::newRow("UTF-16") << QByteArray("{\0\"\0a\0\"\0:\0"
                                              "1\0}\0",
                                              14);
        add("  \r\n");
        add("null");
        add("true");
        add("\"text\"");
        add("7");
        add(longNumber);
        add("{");
        add("[");
        add("{\"a\":1");
        add("{\"a\":1}}");
        add("{\"a\" 1}");
        add("{\"a\":1,}");
        add("[1,]");
        add("[1 2]");
        add("[+1]");
        add("[01]");
        add("[--1]");
        add("[1.2.3]");
        add("['a']");
        add("[\"a]");
        add("[\"a\\");
        add("[\"a\\\"]");
        add("{\"a\":\"");
        // A number that is kept must not lend its place the shape of a string.
        for (const char *const pattern :
             {"{%:1}",    "{% :1}", "{%\r\n\t:1}", "{\"a\":1,%:2}", "{%}",    "{%,\"a\":1}",
              "{\"a\"%}", "[% %]",  "[\"a\"%]",    "[%\"a\"]",      "[tru%]", "[%e]",
              "[-%-]",    "[0%]",   "[+%]",        "[%:1]",         "[%",     "%]",
              "{\"a\":%", "[1]%",   "%[1]",        "[1,%,]"})
            add(QByteArray(pattern).replace('%', longNumber));
    }

    void aTextThatIsNoJsonIsAnError()
    {
        QFETCH(QByteArray, text);

        QVERIFY(!parseJson(text).ok());
    }

    void aTextThatIsNoJsonIsTheSameErrorAsForQt_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("cut off") << QByteArray("{\"a\":1");
        QTest::newRow("no value") << QByteArray("{\"a\":}");
        QTest::newRow("no name") << QByteArray("{1:2}");
        QTest::newRow("cut off behind a long number") << QByteArray("{\"a\":12345678901234567890");
        QTest::newRow("rubbish behind a long number") << QByteArray("[12345678901234567890 x]");
    }

    void aTextThatIsNoJsonIsTheSameErrorAsForQt()
    {
        QFETCH(QByteArray, text);
        QJsonParseError error;
        QJsonDocument::fromJson(text, &error);

        QCOMPARE(parseJson(text).error.errorString(), error.errorString());
    }

    void stringsAreLeftAlone_data()
    {
        QTest::addColumn<QByteArray>("string");
        const char *const strings[] = {
            R"("12345678901234567890")",
            R"("a 12345678901234567890 b")",
            "\"\\\"12345678901234567890\\\"\"", // moc loses its way in raw strings with \"
            R"("\\")",
            "\"\\\\\\\"12345678901234567890\"",
            R"("C:\\dir\\18446744073709551615")",
            R"("@number-0123456789abcdef:18446744073709551615")",
            R"("{[,:]}")",
            "\"中文 é 👓\"",
            "\"\xef\xbb\xbf begins with a byte order mark\"",
            "\"\xef\xbb\xbf\xef\xbb\xbf\"",
            "\"holds one \xef\xbb\xbf\"",
            R"("null bytes \u0000 spelled out")",
            R"("")",
        };
        for (const char *string : strings)
            QTest::newRow(string) << QByteArray(string);
    }

    void stringsAreLeftAlone()
    {
        QFETCH(QByteArray, string);

        // With and without a number that is kept beside it.
        QCOMPARE(roundTrip("[" + string + "]"), "[\n    " + string + "\n]\n");
        QCOMPARE(roundTrip("[" + string + ",18446744073709551615," + string + "]"),
                 "[\n    " + string + ",\n    18446744073709551615,\n    " + string + "\n]\n");
        // As a name as well.
        QCOMPARE(roundTrip("{" + string + ":18446744073709551615}"),
                 "{\n    " + string + ": 18446744073709551615\n}\n");
    }

    void namesThatDifferBehindANullByteAreTwo()
    {
        const QByteArray written =
            "{\n    \"a\": 3,\n    \"a\\u0000b\": 1,\n    \"a\\u0000c\": 2\n}\n";

        QCOMPARE(roundTrip(QByteArray("{\"a\0b\":1,\"a\0c\":2,\"a\":3}", 23)), written);
        QCOMPARE(roundTrip(written), written);
    }

    void aByteOrderMarkIsSkipped()
    {
        const QByteArray mark = "\xef\xbb\xbf";

        QCOMPARE(roundTrip(mark + "{\"n\":7}"), documentOf("7"));
        QCOMPARE(roundTrip(mark + "{\"n\":18446744073709551615}"),
                 documentOf("18446744073709551615"));
    }

    void nestingIsAllowedAsDeepAsQtAllowsIt()
    {
        const auto nested = [](int depth) {
            return QByteArray(depth, '[') + "18446744073709551615" + QByteArray(depth, ']');
        };

        QVERIFY(parseJson(nested(1000)).ok());
        QVERIFY(toIndented(parseJson(nested(1000))).contains(" 18446744073709551615\n"));
        QCOMPARE(parseJson(nested(5000)).error.error, QJsonParseError::DeepNesting);
        QVERIFY(!parseJson(QByteArray(10000000, '[')).ok());
        QVERIFY(!parseJson(QByteArray("{\"a\":").repeated(1000000)).ok());
    }

    void aKeptNumberIsNoTextToAnybody()
    {
        const JsonDocument json = parseJson(R"({"a":18446744073709551615,"b":"text","c":7})");
        const QJsonObject root = json.document.object();

        QCOMPARE(json.text(root.value(QStringLiteral("a"))), QString());
        QCOMPARE(json.text(root.value(QStringLiteral("b"))), QStringLiteral("text"));
        QCOMPARE(json.text(root.value(QStringLiteral("c"))), QString());
        QCOMPARE(json.text(QJsonValue()), QString());
        QCOMPARE(parseJson(R"(["text"])").text(QJsonValue(QStringLiteral("text"))),
                 QStringLiteral("text"));
    }

    void aKeptNumberMovesWithItsObject()
    {
        JsonDocument json = parseJson(R"({"old":{"id":18446744073709551615},"x":1})");
        QJsonObject root = json.document.object();

        QJsonObject moved;
        moved.insert(QStringLiteral("new"), root.value(QStringLiteral("old")));
        json.document.setObject(moved);

        QCOMPARE(toIndented(json), QByteArray("{\n    \"new\": {\n        \"id\": "
                                              "18446744073709551615\n    }\n}\n"));
    }

    void everyOtherEditLeavesKeptNumbersAlone()
    {
        JsonDocument json =
            parseJson(R"({"a":[1,18446744073709551615,0.30000000000000004],"n":1})");
        QJsonObject root = json.document.object();

        root.insert(QStringLiteral("n"), 90.0);
        root.insert(QStringLiteral("t"), QStringLiteral("12345678901234567890"));
        json.document.setObject(root);

        QCOMPARE(toIndented(json), QByteArray("{\n"
                                              "    \"a\": [\n"
                                              "        1,\n"
                                              "        18446744073709551615,\n"
                                              "        0.30000000000000004\n"
                                              "    ],\n"
                                              "    \"n\": 90,\n"
                                              "    \"t\": \"12345678901234567890\"\n"
                                              "}\n"));
    }

    void whatOnlyQtTakesForANumberCostsNoOtherNumber()
    {
        QCOMPARE(roundTrip("[.12345678901234567e1,18446744073709551615]"),
                 QByteArray("[\n    1.2345678901234567,\n    18446744073709551615\n]\n"));
    }

    void theLayoutIsQtsIndentedOne()
    {
        const QByteArray text = R"({"b":[],"a":{"x":null,"y":[true,{"z":"é"}]}})";

        QCOMPARE(roundTrip(text), QJsonDocument::fromJson(text).toJson(QJsonDocument::Indented));
    }

    void aHugeDocumentIsReadAndWrittenInLinearTime()
    {
        // 20 MB. Anything quadratic would run into the time-out of the program.
        const QByteArray number = "18446744073709551615";
        QByteArray text = "[";
        for (int i = 0; i < 500000; ++i)
            text += number + ",\"C:\\\\dir\",1.5,";
        text += "0]";
        const QByteArray digits(20000000, '7');

        const QByteArray written = roundTrip(text);
        QCOMPARE(written.count(number), 500000);
        QVERIFY(written.endsWith("    0\n]\n"));
        QCOMPARE(roundTrip("[" + digits + "]"), "[\n    " + digits + "\n]\n");
    }
};

KOLM_TEST_MAIN(TestJsonDocument)
#include "tst_json_document.moc"
