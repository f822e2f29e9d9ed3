#include "link/command_protocol.h"
#include "tests/support/test_case.h"

using namespace command_protocol;

Q_DECLARE_METATYPE(HeadsetRecord)

namespace {

std::string_view view(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

HmdInfoBack parseHmdInfo(const QString &argument)
{
    const QByteArray bytes = argument.toUtf8();
    return std::get<HmdInfoBack>(parse({"HMDINFOBACK", view(bytes)}));
}

} // namespace

class CommandProtocolTest : public TestCase
{
    Q_OBJECT

private slots:
    void splitsALineAtTheFirstTab_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("argument");
        QTest::newRow("empty") << QByteArray("") << QByteArray("") << QByteArray("");
        QTest::newRow("no tab") << QByteArray("Hello") << QByteArray("Hello") << QByteArray("");
        QTest::newRow("one tab") << QByteArray("A\tb") << QByteArray("A") << QByteArray("b");
        QTest::newRow("later tabs stay")
            << QByteArray("A\tb\tc\t") << QByteArray("A") << QByteArray("b\tc\t");
        QTest::newRow("tab first") << QByteArray("\tb") << QByteArray("") << QByteArray("b");
        QTest::newRow("tab last") << QByteArray("A\t") << QByteArray("A") << QByteArray("");
        QTest::newRow("blanks and carriage return stay")
            << QByteArray(" A \t b \r") << QByteArray(" A ") << QByteArray(" b \r");
    }

    void splitsALineAtTheFirstTab()
    {
        QFETCH(QByteArray, line);
        const Line split = splitLine(view(line));
        QTEST(QByteArray::fromStdString(std::string(split.name)), "name");
        QTEST(QByteArray::fromStdString(std::string(split.argument)), "argument");
    }

    void knowsACommandByItsWholeName_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<int>("kind");
        const auto row = [](const char *name, const Command &command) {
            QTest::newRow(*name ? name : "empty") << QByteArray(name) << int(command.index());
        };
        row("DeviceConnectBack", DeviceConnectBack());
        row("HMDINFOBACK", HmdInfoBack());
        row("RESTARTSTEAMVR", RestartSteamVR());
        row("Hello", Hello());
        row("", Unknown());
        row("hello", Unknown());
        row("Hello\r", Unknown());
        row(" Hello", Unknown());
        row("Hell", Unknown());
        row("HMDINFOBACKX", Unknown());
        row("deviceconnectback", Unknown());
        row("RegisterFireWall", Unknown());
    }

    void knowsACommandByItsWholeName()
    {
        QFETCH(QByteArray, name);
        QTEST(int(parse({view(name), "x"}).index()), "kind");
    }

    void findsTheWordTrueAnywhere_data()
    {
        QTest::addColumn<QByteArray>("argument");
        QTest::addColumn<bool>("connected");
        QTest::newRow("true") << QByteArray("true") << true;
        QTest::newRow("nottrue") << QByteArray("nottrue") << true;
        QTest::newRow("truer") << QByteArray("truer\r") << true;
        QTest::newRow("TRUE") << QByteArray("TRUE") << false;
        QTest::newRow("True") << QByteArray("True") << false;
        QTest::newRow("tru") << QByteArray("tru") << false;
        QTest::newRow("false") << QByteArray("false") << false;
        QTest::newRow("empty") << QByteArray("") << false;
    }

    void findsTheWordTrueAnywhere()
    {
        QFETCH(QByteArray, argument);
        const Command command = parse({"DeviceConnectBack", view(argument)});
        QTEST(std::get<DeviceConnectBack>(command).connected, "connected");
    }

    void readsTheListOfHeadsets_data()
    {
        QTest::addColumn<QString>("argument");
        QTest::addColumn<QString>("deviceId");
        QTest::addColumn<HeadsetList>("headsets");

        QTest::newRow("example") << "deviceId:ABC~S1;Name1;true;x~S2;Name2;false;y"
                                 << "ABC"
                                 << HeadsetList{{"S1", "Name1", true}, {"S2", "Name2", false}};
        QTest::newRow("empty") << ""
                               << "" << HeadsetList{};
        QTest::newRow("only separators") << "~~~"
                                         << "" << HeadsetList{};
        QTest::newRow("FALSE is false") << "S;N;FALSE;z"
                                        << "" << HeadsetList{{"S", "N", false}};
        QTest::newRow("fAlSe is false") << "S;N;fAlSe;"
                                        << "" << HeadsetList{{"S", "N", false}};
        QTest::newRow("0 is true") << "S;N;0;z"
                                   << "" << HeadsetList{{"S", "N", true}};
        QTest::newRow("nothing is true") << "S;N;;z"
                                         << "" << HeadsetList{{"S", "N", true}};
        QTest::newRow("false with a blank is true") << "S;N;false ;z"
                                                    << "" << HeadsetList{{"S", "N", true}};
        QTest::newRow("three fields") << "S;N;true"
                                      << "" << HeadsetList{};
        QTest::newRow("five fields") << "S;N;true;x;y"
                                     << "" << HeadsetList{};
        QTest::newRow("four empty fields") << ";;;"
                                           << "" << HeadsetList{{"", "", true}};
        QTest::newRow("bad items between good ones")
            << "A;1;true;x~B;2~C;3;false;y~"
            << "" << HeadsetList{{"A", "1", true}, {"C", "3", false}};
        QTest::newRow("doubled headsets stay")
            << "A;1;true;x~A;1;true;x"
            << "" << HeadsetList{{"A", "1", true}, {"A", "1", true}};
        QTest::newRow("id word alone keeps the id") << "deviceId:"
                                                    << "" << HeadsetList{};
        QTest::newRow("every id word is taken out") << "deviceId:AdeviceId:B"
                                                    << "AB" << HeadsetList{};
        QTest::newRow("id words that arise are kept") << "devicedeviceId:Id:"
                                                      << "deviceId:" << HeadsetList{};
        QTest::newRow("the id word counts anywhere") << "xdeviceId:y"
                                                     << "xy" << HeadsetList{};
        QTest::newRow("the id word in a record makes it an id") << "S;deviceId:;true;x"
                                                                << "S;;true;x" << HeadsetList{};
        QTest::newRow("the last id wins") << "deviceId:A~deviceId:B~deviceId:"
                                          << "B" << HeadsetList{};
        QTest::newRow("the id word with another case is none") << "deviceid:ABC~DEVICEID:D"
                                                               << "" << HeadsetList{};
        QTest::newRow("Chinese") << QStringLiteral("deviceId:头显~头显;地址;true;x")
                                 << QStringLiteral("头显")
                                 << HeadsetList{
                                        {QStringLiteral("头显"), QStringLiteral("地址"), true}};
    }

    void readsTheListOfHeadsets()
    {
        QFETCH(QString, argument);
        QFETCH(HeadsetList, headsets);
        const HmdInfoBack info = parseHmdInfo(argument);
        QTEST(info.deviceId, "deviceId");
        QCOMPARE(info.headsets, headsets);
    }

    void readsAHundredThousandHeadsets()
    {
        QString argument = QStringLiteral("deviceId:S99999");
        for (int i = 0; i < 100000; ++i)
            argument += QStringLiteral("~S%1;10.0.0.1;%2;x").arg(i).arg(i % 2 ? "false" : "true");
        const HmdInfoBack info = parseHmdInfo(argument);
        QCOMPARE(info.headsets.size(), 100000);
        QCOMPARE(info.headsets.last(), (HeadsetRecord{"S99999", "10.0.0.1", false}));
        QCOMPARE(info.deviceId, QStringLiteral("S99999"));
    }

    // Would take minutes if every word were taken out of the text by itself.
    void readsAMebibyteOfIdWords()
    {
        const QString word = QStringLiteral("deviceId:");
        QCOMPARE(parseHmdInfo(word.repeated(1024 * 1024 / word.size())).deviceId, QString());
        QCOMPARE(parseHmdInfo(word.repeated(1024 * 1024 / word.size()) + 'X').deviceId,
                 QStringLiteral("X"));
    }

    void takesBytesAsUtf8_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        const QString replacement(QChar::ReplacementCharacter);
        QTest::newRow("empty") << QByteArray("") << QString("");
        QTest::newRow("ASCII") << QByteArray("abc") << QString("abc");
        QTest::newRow("Chinese") << QByteArray("\xE5\xA4\xB4") << QStringLiteral("头");
        QTest::newRow("lone byte") << QByteArray("a\xFF"
                                                 "b")
                                   << QString("a" + replacement + "b");
        QTest::newRow("cut off") << QByteArray("a\xE5\xA4;b")
                                 << QString("a" + replacement + replacement + ";b");
    }

    void takesBytesAsUtf8()
    {
        QFETCH(QByteArray, bytes);
        QTEST(toText(view(bytes)), "text");
    }

    void buildsTheSentTexts()
    {
        QCOMPARE(linkTo("D3X", "10.0.0.7"), QString("LinkTo D3X 10.0.0.7 "));
        QCOMPARE(command_protocol::disconnect("D3X", "10.0.0.7"),
                 QString("Disconnect D3X 10.0.0.7 "));
        QCOMPARE(linkTo("", ""), QString("LinkTo   "));
        QCOMPARE(hmdInfoRequest(), QString("HMDInfoRequest"));
        QCOMPARE(connectionRequest(true), QString("WiredConnect"));
        QCOMPARE(connectionRequest(false), QString("WirelessConnect"));
        QCOMPARE(registerFirewall(), QString("RegisterFireWall"));
        QCOMPARE(helloReply(), QString("HHHH, You can see me!\n"));
    }

    void fillsInTextsThatLookLikePlaceholders()
    {
        QCOMPARE(linkTo("%2", "%1"), QString("LinkTo %2 %1 "));
        QCOMPARE(command_protocol::disconnect("%2", "x"), QString("Disconnect %2 x "));
    }
};

KOLM_TEST_MAIN(CommandProtocolTest)
#include "tst_command_protocol.moc"
