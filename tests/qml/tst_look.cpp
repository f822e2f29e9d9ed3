#include "tests/qml/contrast.h"
#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QColor>
#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QRawFont>
#include <QXmlStreamReader>

#include <memory>

// The constants of the look, and that one can read what is written in them.
class TestLook : public TestCase
{
    Q_OBJECT

    std::unique_ptr<QQmlEngine> engine_;
    std::unique_ptr<QObject> utils_;
    QColor color(const QString &name) const
    {
        return utils_->property(qPrintable(name)).value<QColor>();
    }

private slots:
    void initTestCase()
    {
        registerInterface();
        engine_ = std::make_unique<QQmlEngine>();
        QQmlComponent component(engine_.get(), QUrl("qrc:/qml/Utils.qml"));
        utils_.reset(component.create());
        QVERIFY(utils_);
    }

    void cleanupTestCase()
    {
        utils_.reset();
        engine_.reset();
    }

    void tonesAreThoseOfTheProduct()
    {
        QCOMPARE(utils_->property("orb_font").toString(), QString("Source Han Sans CN Medium"));
        QCOMPARE(color("orb_backgroundcolor"), QColor("#1A1B21"));
        QCOMPARE(color("orb_itemdowncolor"), QColor("#22242C"));
        // Its components are far above 1, and cut off there.
        QCOMPARE(color("orb_itemcolor"), QColor::fromRgbF(1, 1, 1, 0.06));
        QCOMPARE(color("orb_btnbackgroundcolor"), QColor("#393939"));
        QCOMPARE(color("accent"), QColor("#1E68FF"));
    }

    void textsCanBeRead_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("surface");

        const auto rows = [](const char *text, const QStringList &surfaces) {
            for (const QString &surface : surfaces)
                QTest::addRow("%s on %s", text, qPrintable(surface)) << text << surface;
        };
        rows("text", {"orb_backgroundcolor", "orb_itemdowncolor", "orb_itemcolor",
                      "orb_btnbackgroundcolor", "buttonHovered", "buttonPressed", "accent",
                      "accentHovered", "accentPressed", "closeHovered"});
        rows("textSecondary", {"orb_backgroundcolor", "orb_itemdowncolor", "orb_itemcolor"});
        rows("accentText", {"orb_backgroundcolor", "orb_itemdowncolor"});
        rows("attention", {"orb_itemdowncolor"});
    }
    void textsCanBeRead()
    {
        QFETCH(QString, text);
        QFETCH(QString, surface);
        const QColor below = contrast::over(color(surface), color("orb_itemdowncolor"));
        const double found = contrast::between(color(text), below);
        QVERIFY2(found >= 4.5, qPrintable(QString::number(found)));
    }

    void signsCanBeSeen_data()
    {
        QTest::addColumn<QString>("sign");
        for (const char *sign : {"done", "attention", "failure", "focus", "accent"})
            QTest::newRow(sign) << sign;
    }
    void signsCanBeSeen()
    {
        QFETCH(QString, sign);
        for (const char *surface : {"orb_backgroundcolor", "orb_itemdowncolor"}) {
            const double found = contrast::between(color(sign), color(surface));
            QVERIFY2(found >= 3, qPrintable(QString::number(found)));
        }
    }

    void everyCharacterIsInTheFont_data()
    {
        QTest::addColumn<QString>("language");
        QTest::newRow("Japanese") << "japanese";
        QTest::newRow("English") << "chinese";
    }
    void everyCharacterIsInTheFont()
    {
        // The system would take a missing one from another font, if it has any.
        QFETCH(QString, language);
        const QRawFont font(QStringLiteral(":/res/SourceHanSansCN-Medium.ttf"), 20);
        QVERIFY(font.isValid());
        QFile file(QStringLiteral(KOLM_SOURCE_DIR "/translations/") + language + ".ts");
        QVERIFY(file.open(QIODevice::ReadOnly));
        QXmlStreamReader xml(&file);
        int texts = 0;
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement ||
                (xml.name() != QLatin1String("source") &&
                 xml.name() != QLatin1String("translation")))
                continue;
            ++texts;
            const QString text = xml.readElementText();
            for (uint character : text.toUcs4()) {
                if (character != '\n')
                    QVERIFY2(font.supportsCharacter(character), qPrintable(text));
            }
        }
        QVERIFY(texts > 200);
    }
};

KOLM_GUI_TEST_MAIN(TestLook)
#include "tst_look.moc"
