#include "config/streaming_choices.h"
#include "tests/support/test_case.h"

class TestStreamingChoices : public TestCase
{
    Q_OBJECT

private slots:
    // Files and properties hold them.
    void numbersAreThoseOfTheFiles()
    {
        QCOMPARE(int(StreamingChoices::Smooth), 0);
        QCOMPARE(int(StreamingChoices::Standard), 1);
        QCOMPARE(int(StreamingChoices::High), 2);
        QCOMPARE(int(StreamingChoices::Custom), 3);
        QCOMPARE(int(StreamingChoices::Hz72), 0);
        QCOMPARE(int(StreamingChoices::Hz90), 1);
        QCOMPARE(int(StreamingChoices::H264), 0);
        QCOMPARE(int(StreamingChoices::Hevc), 1);
        QCOMPARE(int(StreamingChoices::HevcTenBit), 2);
        QCOMPARE(int(StreamingChoices::Av1), 3);
    }

    void fixedDefinitionHasABitRate_data()
    {
        QTest::addColumn<int>("definition");
        QTest::addColumn<int>("bitRate");
        QTest::newRow("below") << -1 << 0;
        QTest::newRow("smooth") << 0 << 20;
        QTest::newRow("standard") << 1 << 50;
        QTest::newRow("high") << 2 << 100;
        QTest::newRow("custom") << 3 << 0;
        QTest::newRow("above") << 4 << 0;
    }
    void fixedDefinitionHasABitRate()
    {
        QFETCH(int, definition);
        QFETCH(int, bitRate);
        QCOMPARE(StreamingChoices::bitRate(definition), bitRate);
        QCOMPARE(StreamingChoices::preset(definition) != nullptr, bitRate != 0);
    }

    void anyOtherFrameRateIsTheLowOne()
    {
        QCOMPARE(StreamingChoices::hertz(StreamingChoices::Hz72), 72);
        QCOMPARE(StreamingChoices::hertz(StreamingChoices::Hz90), 90);
        QCOMPARE(StreamingChoices::hertz(-1), 72);
        QCOMPARE(StreamingChoices::hertz(2), 72);
    }

    void cardTellsWhichEncodersAreOffered()
    {
        QCOMPARE(StreamingChoices::lastEncoder(false, false), int(StreamingChoices::Hevc));
        QCOMPARE(StreamingChoices::lastEncoder(false, true), int(StreamingChoices::HevcTenBit));
        QCOMPARE(StreamingChoices::lastEncoder(true, true), int(StreamingChoices::Av1));
        QCOMPARE(StreamingChoices::lastEncoder(true, false), int(StreamingChoices::Av1));
    }
};

KOLM_TEST_MAIN(TestStreamingChoices)
#include "tst_streaming_choices.moc"
