#include "tests/support/test_case.h"
#include "ui/hit_test.h"

#include <QCoreApplication>

using namespace hit_test;

namespace {

// A window at (100, 200) of 300 by 150 pixels: right and bottom, the first
// pixels outside, are 400 and 350.
const Frame window{100, 200, 400, 350};
const QSize anySmall(0, 0);
const QSize anyLarge(16777215, 16777215);

Resizing freely(int band)
{
    return {true, band, anySmall, anyLarge};
}

} // namespace

Q_DECLARE_METATYPE(Resizing)
Q_DECLARE_METATYPE(TitleBarSpot)

class TestHitTest : public TestCase
{
    Q_OBJECT

private slots:
    void pointsOfAResizableWindow_data()
    {
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<int>("code");

        QTest::newRow("middle") << QPoint(250, 275) << int(Undecided);
        QTest::newRow("first pixel of the left strip") << QPoint(100, 275) << int(Left);
        QTest::newRow("last pixel of the left strip") << QPoint(107, 275) << int(Left);
        QTest::newRow("just inside of the left strip") << QPoint(108, 275) << int(Undecided);
        QTest::newRow("just outside on the left") << QPoint(99, 275) << int(Undecided);
        QTest::newRow("first pixel of the right strip") << QPoint(392, 275) << int(Right);
        QTest::newRow("last pixel of the right strip") << QPoint(399, 275) << int(Right);
        QTest::newRow("just inside of the right strip") << QPoint(391, 275) << int(Undecided);
        QTest::newRow("just outside on the right") << QPoint(400, 275) << int(Undecided);
        QTest::newRow("first pixel of the top strip") << QPoint(250, 200) << int(Top);
        QTest::newRow("last pixel of the top strip") << QPoint(250, 207) << int(Top);
        QTest::newRow("just inside of the top strip") << QPoint(250, 208) << int(Undecided);
        QTest::newRow("just outside above") << QPoint(250, 199) << int(Undecided);
        QTest::newRow("first pixel of the bottom strip") << QPoint(250, 342) << int(Bottom);
        QTest::newRow("last pixel of the bottom strip") << QPoint(250, 349) << int(Bottom);
        QTest::newRow("just inside of the bottom strip") << QPoint(250, 341) << int(Undecided);
        QTest::newRow("just outside below") << QPoint(250, 350) << int(Undecided);
        QTest::newRow("top left corner") << QPoint(100, 200) << int(TopLeft);
        QTest::newRow("last pixel of the top left square") << QPoint(107, 207) << int(TopLeft);
        QTest::newRow("beside the top left square") << QPoint(108, 207) << int(Top);
        QTest::newRow("below the top left square") << QPoint(107, 208) << int(Left);
        QTest::newRow("top right corner") << QPoint(399, 200) << int(TopRight);
        QTest::newRow("beside the top right square") << QPoint(391, 207) << int(Top);
        QTest::newRow("below the top right square") << QPoint(392, 208) << int(Right);
        QTest::newRow("bottom left corner") << QPoint(100, 349) << int(BottomLeft);
        QTest::newRow("beside the bottom left square") << QPoint(108, 342) << int(Bottom);
        QTest::newRow("above the bottom left square") << QPoint(107, 341) << int(Left);
        QTest::newRow("bottom right corner") << QPoint(399, 349) << int(BottomRight);
        QTest::newRow("beside the bottom right square") << QPoint(391, 342) << int(Bottom);
        QTest::newRow("above the bottom right square") << QPoint(392, 341) << int(Right);
    }

    void pointsOfAResizableWindow()
    {
        QFETCH(QPoint, point);
        QFETCH(int, code);
        QCOMPARE(int(edgeAt(window, freely(8), point)), code);
    }

    void whatMayBeResized_data()
    {
        QTest::addColumn<Resizing>("resizing");
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<int>("code");

        const QPoint left(100, 275);
        const QPoint right(399, 275);
        const QPoint top(250, 200);
        const QPoint bottom(250, 349);
        const QPoint corner(100, 200);

        const Resizing off{false, 8, anySmall, anyLarge};
        QTest::newRow("switched off, left") << off << left << int(Undecided);
        QTest::newRow("switched off, top") << off << top << int(Undecided);
        QTest::newRow("switched off, corner") << off << corner << int(Undecided);

        const Resizing fixedWidth{true, 8, QSize(300, 0), QSize(300, 900)};
        QTest::newRow("fixed width, left") << fixedWidth << left << int(Undecided);
        QTest::newRow("fixed width, right") << fixedWidth << right << int(Undecided);
        QTest::newRow("fixed width, top") << fixedWidth << top << int(Top);
        QTest::newRow("fixed width, bottom") << fixedWidth << bottom << int(Bottom);
        QTest::newRow("fixed width, corner is top") << fixedWidth << corner << int(Top);

        const Resizing fixedHeight{true, 8, QSize(0, 150), QSize(900, 150)};
        QTest::newRow("fixed height, left") << fixedHeight << left << int(Left);
        QTest::newRow("fixed height, right") << fixedHeight << right << int(Right);
        QTest::newRow("fixed height, top") << fixedHeight << top << int(Undecided);
        QTest::newRow("fixed height, bottom") << fixedHeight << bottom << int(Undecided);
        QTest::newRow("fixed height, corner is left") << fixedHeight << corner << int(Left);

        const Resizing fixedSize{true, 8, QSize(300, 150), QSize(300, 150)};
        QTest::newRow("fixed size, left") << fixedSize << left << int(Undecided);
        QTest::newRow("fixed size, top") << fixedSize << top << int(Undecided);
        QTest::newRow("fixed size, corner") << fixedSize << corner << int(Undecided);

        QTest::newRow("no strip, left") << freely(0) << left << int(Undecided);
        QTest::newRow("no strip, right") << freely(0) << right << int(Undecided);
        QTest::newRow("no strip, top") << freely(0) << top << int(Undecided);
        QTest::newRow("no strip, bottom") << freely(0) << bottom << int(Undecided);
        QTest::newRow("no strip, corner") << freely(0) << corner << int(Undecided);
    }

    void whatMayBeResized()
    {
        QFETCH(Resizing, resizing);
        QFETCH(QPoint, point);
        QFETCH(int, code);
        QCOMPARE(int(edgeAt(window, resizing, point)), code);
    }

    void laterStripsWinWhereTheyOverlap_data()
    {
        QTest::addColumn<Resizing>("resizing");
        QTest::addColumn<int>("code");

        // In a window of 10 by 10 pixels every strip of 10 covers everything.
        QTest::newRow("right over left")
            << Resizing{true, 10, QSize(0, 10), QSize(900, 10)} << int(Right);
        QTest::newRow("top over bottom")
            << Resizing{true, 10, QSize(10, 0), QSize(10, 900)} << int(Top);
        QTest::newRow("the last corner over all") << freely(10) << int(TopRight);
    }

    void laterStripsWinWhereTheyOverlap()
    {
        QFETCH(Resizing, resizing);
        QFETCH(int, code);
        QCOMPARE(int(edgeAt({0, 0, 10, 10}, resizing, QPoint(5, 5))), code);
    }

    void pointsOfTheTitleBar_data()
    {
        QTest::addColumn<TitleBarSpot>("spot");
        QTest::addColumn<int>("code");

        QTest::newRow("outside") << TitleBarSpot::Outside << int(Undecided);
        QTest::newRow("bare") << TitleBarSpot::Bare << int(Caption);
        QTest::newRow("label") << TitleBarSpot::Label << int(Caption);
        QTest::newRow("control") << TitleBarSpot::Control << int(Undecided);
    }

    void pointsOfTheTitleBar()
    {
        QFETCH(TitleBarSpot, spot);
        QFETCH(int, code);
        QCOMPARE(int(captionAt(spot)), code);
    }

    void codesAreTheSystemsNumbers()
    {
        QCOMPARE(int(Caption), 2);
        QCOMPARE(int(Left), 10);
        QCOMPARE(int(Right), 11);
        QCOMPARE(int(Top), 12);
        QCOMPARE(int(TopLeft), 13);
        QCOMPARE(int(TopRight), 14);
        QCOMPARE(int(Bottom), 15);
        QCOMPARE(int(BottomLeft), 16);
        QCOMPARE(int(BottomRight), 17);
    }
};

KOLM_TEST_MAIN(TestHitTest)
#include "tst_hit_test.moc"
