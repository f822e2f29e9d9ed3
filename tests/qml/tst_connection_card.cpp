#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QMetaEnum>

using connection::State;

// The headset's card as the connection's state has it, whatever the controller's
// older properties still say.
class TestConnectionCard : public TestCase
{
    Q_OBJECT

    // A page that was connected the moment before, over Wi-Fi or the cable, with
    // `listed` headsets in the list.
    static void begin(Interface *pages, bool wired, int listed)
    {
        pages->load();
        pages->orb.becomeWired(wired);
        std::vector<FakeHeadsets::Row> rows;
        for (int i = 0; i < listed; ++i)
            rows.push_back({QString::number(i), "1.2.3.4", i == 0, false});
        pages->orb.headsets.fill(rows);
        pages->orb.becomeEnumerated(true);
        pages->orb.becomeConnected(true, wired ? QString() : zh("眼镜ID：4B2F91"));
    }
    static QString steps(Interface &pages)
    {
        return pages.find("steps")->property("steps").toStringList().value(0);
    }

private slots:
    void initTestCase() { registerInterface(); }

    void everyStateHasItsWords_data()
    {
        QTest::addColumn<bool>("wired");
        QTest::addColumn<State>("state");
        QTest::addColumn<bool>("found");
        QTest::addColumn<int>("listed");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("mark");
        const auto wifi = [](const char *name, State state, int listed, const char *status,
                             const char *mark) {
            QTest::newRow(qPrintable(QStringLiteral("Wi-Fi, ") + name))
                << false << state << (listed > 0) << listed << zh(status) << mark;
        };
        const auto cable = [](const char *name, State state, bool found, const char *status,
                              const char *mark) {
            QTest::newRow(qPrintable(QStringLiteral("cable, ") + name))
                << true << state << found << 0 << zh(status) << mark;
        };
        const char *const connected = "已连接，戴上眼镜开始串流吧！";
        wifi("no server", State::NoServer, 0, "搜索中", "StatusMark.Busy");
        wifi("searching", State::Searching, 0, "搜索中", "StatusMark.Busy");
        wifi("asking, one", State::AskingUser, 1, "请选择眼镜连接", "StatusMark.Attention");
        wifi("asking, several", State::AskingUser, 2, "请选择设备连接", "StatusMark.Attention");
        wifi("linking", State::Linking, 1, "连接中", "StatusMark.Busy");
        wifi("linking one of several", State::Linking, 2, "连接中", "StatusMark.Busy");
        wifi("connected", State::Connected, 2, connected, "StatusMark.Done");
        wifi("lost", State::Lost, 0, "搜索中", "StatusMark.Busy");
        wifi("lost, another is there", State::Lost, 1, "请选择眼镜连接", "StatusMark.Attention");
        wifi("let go", State::LetGo, 1, "请选择眼镜连接", "StatusMark.Attention");
        wifi("let go, gone", State::LetGo, 0, "搜索中", "StatusMark.Busy");
        cable("no server", State::NoServer, false, "检测中", "StatusMark.Busy");
        cable("no server, plugged in", State::NoServer, true, "连接中", "StatusMark.Busy");
        cable("searching", State::Searching, false, "检测中", "StatusMark.Busy");
        cable("linking", State::Linking, true, "连接中", "StatusMark.Busy");
        cable("connected", State::Connected, true, connected, "StatusMark.Done");
        cable("lost", State::Lost, false, "检测中", "StatusMark.Busy");
    }
    void everyStateHasItsWords()
    {
        QFETCH(bool, wired);
        QFETCH(State, state);
        QFETCH(bool, found);
        QFETCH(int, listed);
        QFETCH(QString, status);
        QFETCH(QString, mark);

        Interface pages;
        begin(&pages, wired, listed);
        pages.orb.connection.set(state, found);
        QCOMPARE(pages.text("headsetPage", "status"), status);
        QVERIFY(pages.is("headsetPage", "mark", mark));

        const bool connected = state == State::Connected;
        QCOMPARE(pages.shown("stopStreaming"), connected);
        QCOMPARE(pages.shown("drawerTab"), connected);
        QCOMPARE(pages.shown("stageStrip"), !connected);
        QCOMPARE(pages.shown("steps"), !connected);
        QCOMPARE(pages.shown("headsets"), !wired && found);
        QCOMPARE(pages.text("bannerText"),
                 connected ? zh("恭喜您完成所有步骤，戴上VR设备开始畅玩游戏吧！～")
                           : zh("完成下列步骤，即可畅玩Steam游戏大作"));
    }

    void theNameOfAConnectionThatIsOverIsNotShown()
    {
        Interface pages;
        begin(&pages, false, 1);
        QCOMPARE(pages.text("headsetPage", "title"), zh("眼镜ID：4B2F91"));
        pages.orb.connection.set(State::NoServer, false);
        QCOMPARE(pages.text("headsetPage", "title"), zh("星程之光眼镜"));
    }

    void theStepsSayWhatToDoWithTheCable()
    {
        Interface pages;
        begin(&pages, true, 0);
        pages.orb.connection.set(State::Searching, false);
        QCOMPARE(steps(pages), zh("确认数据线支持USB 3.0"));
        pages.orb.connection.set(State::Linking, true);
        QCOMPARE(steps(pages), zh("用USB 3.0数据线连接电脑和VR眼镜"));
    }
};

KOLM_GUI_TEST_MAIN(TestConnectionCard)
#include "tst_connection_card.moc"
