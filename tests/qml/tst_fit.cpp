#include "checks/table.h"
#include "tests/qml/dialog_states.h"
#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QLocale>
#include <QTranslator>

#include <memory>

// Texts have room in every language: none is cut off, and none leaves the
// surface that it stands on.
class TestFit : public TestCase
{
    Q_OBJECT

    static std::unique_ptr<QTranslator> translator(const QString &language)
    {
        auto translator = std::make_unique<QTranslator>();
        if (!language.isEmpty()) {
            if (!translator->load(QStringLiteral(KOLM_TRANSLATIONS_DIR "/") + language + ".qm"))
                qWarning("translation is missing");
            QCoreApplication::installTranslator(translator.get());
        }
        return translator;
    }
    static void set(Interface &pages, const QString &state)
    {
        const QString name = QCoreApplication::translate("ORBManager", "星程之光眼镜");
        pages.orb.becomeSteamState(FakeOrb::Pass);
        pages.orb.becomeConnected(false, name);
        pages.orb.becomeSystemInfo(
            "[]",
            QString(QStringLiteral("[[\"%1\",\"12th Gen Intel(R) Core(TM) i9-12900HK @ 5.00GHz\"],"
                                   "[\"%2\",\"NVIDIA GeForce RTX 3070 Ti Laptop GPU\"]]"))
                .arg(QCoreApplication::translate("ORBManager", "处理器："),
                     QCoreApplication::translate("ORBManager", "显卡：")));
        pages.orb.becomeHardware(state == "no steam" ? FakeOrb::NotCanRun
                                                     : FakeOrb::AdviceHardware);
        pages.stages.update({true, true, true, false, false}, QDateTime({2024, 1, 1}, {12, 0}));
        if (state == "no steam") {
            pages.orb.becomeSteamState(FakeOrb::NoneSteam);
            pages.orb.becomeSteam(false);
        } else if (state == "several headsets") {
            pages.orb.becomeSteam(true);
            pages.orb.headsets.fill({{"D3A0017C4B2F91AA55", "192.168.100.123", false, true},
                                     {"D2B1118C7A0E04", "192.168.1.42", false, false},
                                     {"X", "10.0.0.1", false, false}});
            emit pages.orb.showVrList(false, true);
        } else if (state == "connected" || state == "details") {
            pages.orb.becomeSteam(true);
            pages.orb.becomeSteamVR(true);
            pages.orb.headsets.fill({{"D3A0017C4B2F91", "192.168.1.23", true, true}});
            pages.orb.becomeConnected(true, QCoreApplication::translate("ORBManager", "眼镜ID：") +
                                                "4B2F91");
            pages.window()->setProperty("ispullDown", state == "details");
        } else if (state == "wired") {
            pages.orb.becomeWired(true);
        } else if (state == "wired and plugged in") {
            pages.orb.becomeWired(true);
            pages.orb.becomeEnumerated(true);
        }
    }
    static QStringList complaints(QQuickItem *root)
    {
        QStringList found;
        QList<QPair<QString, QRectF>> texts;
        const QList<QQuickItem *> items = Interface::shownItems(root);
        for (QQuickItem *item : items) {
            if (!item->inherits("QQuickText"))
                continue;
            const QString text = item->property("text").toString();
            QRectF drawn = item->mapRectToScene(item->boundingRect());
            for (QQuickItem *around = item->parentItem(); around; around = around->parentItem()) {
                if (around->clip())
                    drawn &= around->mapRectToScene(around->boundingRect());
            }
            for (const auto &other : texts) {
                if (other.second.adjusted(1, 1, -1, -1).intersects(drawn))
                    found.append("lies over " + other.first + ": " + text);
            }
            texts.append({text, drawn});
            if (item->property("truncated").toBool())
                found.append("cut off: " + text);
            if (item->property("contentWidth").toReal() > item->width() + 1 ||
                item->property("contentHeight").toReal() > item->height() + 1)
                found.append("larger than its place: " + text);
            for (QQuickItem *around = item->parentItem(); around; around = around->parentItem()) {
                if (around->inherits("QQuickFlickable"))
                    break; // it scrolls
                if (!around->inherits("QQuickRectangle"))
                    continue;
                const QRectF place = item->mapRectToItem(around, item->boundingRect());
                if (!around->boundingRect().adjusted(-1, -1, 1, 1).contains(place))
                    found.append("leaves its surface: " + text);
            }
        }
        return found;
    }

private slots:
    void initTestCase() { registerInterface(); }

    void textsHaveRoom_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("state");
        for (const char *language : {"", "chinese", "japanese"}) {
            for (const char *state : {"start", "first run", "no steam", "several headsets",
                                      "connected", "details", "wired", "wired and plugged in"})
                QTest::addRow("%s, %s", *language ? language : "source", state)
                    << language << state;
        }
    }
    void textsHaveRoom()
    {
        QFETCH(QString, language);
        QFETCH(QString, state);

        const auto installed = translator(language);
        Interface pages;
        pages.orb.hideSelectPage = state != "first run";
        QVERIFY(pages.load());
        set(pages, state);
        pages.settle();
        QCOMPARE(complaints(pages.window()->contentItem()).join('\n'), QString());
    }

    void textsOfFindingsHaveRoom_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("state");
        for (const char *language : {"", "chinese", "japanese"}) {
            for (const char *state : {"start", "several headsets", "connected", "details", "wired"})
                QTest::addRow("%s, %s", *language ? language : "source", state)
                    << language << state;
        }
    }

    // Every check, also those that have a surface of their own: they may lose it.
    void textsOfFindingsHaveRoom()
    {
        QFETCH(QString, language);
        QFETCH(QString, state);

        const auto installed = translator(language);
        checks::Table rows = checks::table();
        Interface pages;
        QVERIFY(pages.load());
        set(pages, state);
        const checks::Evidence evidence{"",
                                        "NVIDIA GeForce RTX 3070 Ti Laptop GPU, 192.168.100.123"};
        for (checks::Check &row : rows) {
            row.surface = checks::Surface::Card;
            const checks::Finding finding{&row, {evidence, evidence, evidence}};
            // Once in the details, once on the card.
            pages.checks.showAll({finding, finding});
            pages.settle();
            QVERIFY(pages.item("foremost")->property("count").toInt() == 1);
            QCOMPARE(complaints(pages.window()->contentItem()).join('\n'), QString());
        }
    }

    void textsOfDialogsHaveRoom_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<int>("state");
        for (const char *language : {"", "chinese", "japanese"}) {
            for (int state = 0; state < int(dialogStates().size()); ++state)
                QTest::addRow("%s, %s", *language ? language : "source", dialogStates()[state].name)
                    << language << state;
        }
    }
    void textsOfDialogsHaveRoom()
    {
        QFETCH(QString, language);
        QFETCH(int, state);

        const auto installed = translator(language);
        Interface pages;
        QVERIFY(pages.load());
        dialogStates().at(size_t(state)).show(pages);
        pages.settle();
        QVERIFY(pages.dialog());
        QCOMPARE(complaints(pages.dialog()->contentItem()), QStringList());
    }

    void theNoticeOfAWaitHasRoom_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("lasted");
        for (const char *language : {"", "chinese", "japanese"}) {
            for (const char *key : {"steamvr", "cell", "adb"})
                QTest::addRow("%s %s", language, key) << language << key << 4;
            QTest::addRow("%s late", language) << language << "steamvr" << 3600;
        }
    }
    void theNoticeOfAWaitHasRoom()
    {
        QFETCH(QString, language);
        QFETCH(QString, key);
        QFETCH(int, lasted);
        const auto installed = translator(language);
        Interface pages;
        pages.loadAlone(QStringLiteral("qrc:/qml/windows/WaitNotice.qml"),
                        {{"key", key}, {"canEnd", key == "steamvr"}, {"lasted", lasted}});
        pages.settle();
        QCOMPARE(complaints(pages.window()->contentItem()), QStringList());
    }

    void tipOfASecondCopyHasRoom_data()
    {
        QTest::addColumn<QString>("language");
        QTest::newRow("source") << QString();
        QTest::newRow("chinese") << "chinese";
        QTest::newRow("japanese") << "japanese";
    }
    void tipOfASecondCopyHasRoom()
    {
        QFETCH(QString, language);
        const auto installed = translator(language);
        Interface pages;
        pages.loadAlone(QStringLiteral("qrc:/qml/windows/SingleAppTip.qml"));
        pages.settle();
        QCOMPARE(complaints(pages.window()->contentItem()), QStringList());
    }
};

KOLM_GUI_TEST_MAIN(TestFit)
#include "tst_fit.moc"
