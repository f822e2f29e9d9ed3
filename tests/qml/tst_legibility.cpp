#include "tests/qml/contrast.h"
#include "tests/qml/dialog_states.h"
#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QtEndian>

#include <algorithm>

namespace {

// What lies behind the item, as far as the surfaces around it tell.
QColor ground(const QQuickItem *item)
{
    QList<QColor> layers;
    for (QQuickItem *around = item->parentItem(); around; around = around->parentItem()) {
        if (!around->inherits("QQuickRectangle"))
            continue;
        layers.prepend(around->property("color").value<QColor>());
        if (layers.first().alpha() == 255)
            break;
    }
    QColor colour = Qt::black;
    for (const QColor &layer : qAsConst(layers))
        colour = contrast::over(layer, colour);
    return colour;
}

} // namespace

// What is shown can be read and hit by everybody, on every screen.
class TestLegibility : public TestCase
{
    Q_OBJECT

    static void states()
    {
        QTest::addColumn<QString>("state");
        for (const char *state : {"start", "first run", "headsets", "connected", "details"})
            QTest::newRow(state) << state;
        for (const DialogState &state : dialogStates())
            QTest::addRow("dialog: %s", state.name) << QString("dialog: ") + state.name;
    }
    // The content of the window that is looked at.
    static QQuickItem *show(Interface &pages, const QString &state)
    {
        pages.orb.hideSelectPage = state != "first run";
        pages.load();
        pages.orb.becomeSystemInfo("[]", "[[\"CPU:\",\"Some i7\"]]");
        pages.orb.becomeSteamState(FakeOrb::Pass);
        pages.stages.update({true, true, true, false, false}, QDateTime({2024, 1, 1}, {12, 0}));
        if (state == "headsets") {
            pages.orb.becomeSteam(true);
            pages.orb.headsets.fill({{"D3A0017C4B2F91", "192.168.1.23", false, true},
                                     {"D2B1118C7A0E04", "192.168.1.42", false, false}});
        } else if (state == "connected" || state == "details") {
            pages.orb.becomeConnected(true, "Headset ID: 4B2F91");
            pages.window()->setProperty("ispullDown", state == "details");
        }
        for (const DialogState &dialog : dialogStates()) {
            if (state == QString("dialog: ") + dialog.name)
                dialog.show(pages);
        }
        pages.settle();
        return pages.dialog() ? pages.dialog()->contentItem() : pages.window()->contentItem();
    }

private slots:
    void initTestCase() { registerInterface(); }

    void textsStandOut_data() { states(); }
    void textsStandOut()
    {
        QFETCH(QString, state);
        Interface pages;
        QQuickItem *root = show(pages, state);
        QStringList dim;
        int texts = 0;
        for (QQuickItem *item : Interface::shownItems(root)) {
            if (!item->inherits("QQuickText") || item->property("text").toString().isEmpty() ||
                item->parentItem()->objectName() ==
                    "bannerHide") // the accent itself, which is dimmer
                continue;
            ++texts;
            const double found =
                contrast::between(item->property("color").value<QColor>(), ground(item));
            if (found < 4.5)
                dim.append(item->property("text").toString() + ' ' + QString::number(found));
        }
        QVERIFY(texts > 0);
        QCOMPARE(dim.join('\n'), QString());
    }

    void targetsAreLargeEnough_data() { states(); }
    void targetsAreLargeEnough()
    {
        QFETCH(QString, state);
        Interface pages;
        QQuickItem *root = show(pages, state);
        QStringList small;
        int targets = 0;
        for (QQuickItem *item : Interface::shownItems(root)) {
            if (!item->inherits("QQuickMouseArea"))
                continue;
            ++targets;
            if (item->width() < 32 || item->height() < 32) {
                small.append(QStringLiteral("%1 %2x%3")
                                 .arg(item->parentItem()->objectName())
                                 .arg(item->width())
                                 .arg(item->height()));
            }
        }
        QVERIFY(targets > 0 || state == "dialog: wait"); // there is nothing to press
        QCOMPARE(small.join('\n'), QString());
    }

    void imagesAreSharpOnScaledScreens()
    {
        int images = 0;
        QDirIterator files(QStringLiteral(":/res/image"), {QStringLiteral("*.png")});
        while (files.hasNext()) {
            const QString path = files.next();
            if (path.contains('@'))
                continue;
            ++images;
            const QImage normal(path);
            const QImage large(path.left(path.size() - 4) + "@2x.png");
            QVERIFY2(!large.isNull(), qPrintable(path));
            QCOMPARE(large.size(), normal.size() * 2);
        }
        QVERIFY(images > 20);
    }

    void logosHaveTheirSizes()
    {
        QCOMPARE(QImage(QStringLiteral(":/res/image/orb_icon.png")).size(), QSize(153, 40));
        QCOMPARE(QImage(QStringLiteral(":/res/image/orb_icon_en.png")).size(), QSize(249, 40));
    }

    void iconHasAllSizes()
    {
        QFile file(QStringLiteral(":/res/image/orb.ico"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        const auto word = [&](int at) {
            return qFromLittleEndian<quint16>(bytes.constData() + at);
        };
        QCOMPARE(int(word(2)), 1); // an icon, not a pointer
        QList<int> sizes;
        for (int entry = 0; entry < word(4); ++entry) {
            const int width = quint8(bytes.at(6 + 16 * entry));
            sizes.append(width == 0 ? 256 : width);
        }
        std::sort(sizes.begin(), sizes.end());
        QCOMPARE(sizes, (QList<int>{16, 20, 24, 32, 40, 48, 64, 96, 128, 256}));
    }
};

KOLM_GUI_TEST_MAIN(TestLegibility)
#include "tst_legibility.moc"
