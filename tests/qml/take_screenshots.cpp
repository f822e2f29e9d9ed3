// Draws the windows in their states and languages into PNG files, for eyes to
// judge: take_screenshots <folder> [<translation.qm> <language>]. Needs an X server
// (xvfb-run will do): the offscreen platform hands out no pictures.
#include "checks/table.h"
#include "tests/qml/dialog_states.h"
#include "tests/qml/interface.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QLocale>
#include <QPainter>
#include <QQuickWindow>
#include <QTranslator>

#include <functional>

namespace {

void take(const QDir &folder, const QString &name, const std::function<void(Interface &)> &set)
{
    Interface pages;
    pages.orb.becomeSteamState(FakeOrb::Pass);
    pages.orb.becomeConnected(false, QCoreApplication::translate("ORBManager", "星程之光眼镜"));
    if (!pages.load())
        qFatal("the main window cannot be made");
    set(pages);
    pages.settle();
    QImage image = pages.window()->grabWindow();
    auto *toast = pages.window()->findChild<QQuickWindow *>(QStringLiteral("toast"));
    if (toast->isVisible())
        toast->grabWindow().save(folder.filePath(name + "_toast.png"));
    if (FramelessQuickWindow *dialog = pages.dialog()) {
        QPainter(&image).drawImage(dialog->position() - pages.window()->position(),
                                   dialog->grabWindow());
    }
    image.save(folder.filePath(name + ".png"));
}

} // namespace

int main(int argc, char *argv[])
{
    QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
    QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    registerInterface();
    const QStringList arguments = QCoreApplication::arguments();
    QDir folder(arguments.value(1, QStringLiteral(".")));
    folder.mkpath(QStringLiteral("."));
    QTranslator translator;
    if (arguments.size() > 2) {
        if (!translator.load(arguments.at(2)))
            qFatal("no such translation");
        QCoreApplication::installTranslator(&translator);
        QLocale::setDefault(QLocale(arguments.value(3)));
    } else {
        QLocale::setDefault(QLocale(QLocale::Chinese));
    }

    take(folder, QStringLiteral("1_start"), [](Interface &) {});
    take(folder, QStringLiteral("2_no_steam"), [](Interface &pages) {
        pages.orb.becomeSteamState(FakeOrb::NoneSteam);
        pages.orb.becomeSteam(false);
    });
    take(folder, QStringLiteral("3_choose"), [](Interface &pages) {
        pages.orb.becomeSteam(true);
        pages.orb.headsets.fill({{"D3A0017C4B2F91", "192.168.1.23", false, true},
                                 {"D2B1118C7A0E04", "192.168.1.42", false, false}});
        emit pages.orb.showVrList(false, false);
        emit pages.orb.showToast(QCoreApplication::translate(
            "ORBManager",
            "当前无音频设备或音频设备是多声道，请切换成双声道模式或者切换双声道音频设备"));
        QMetaObject::invokeMethod(pages.item("headsets"), "forceActiveFocus");
    });
    take(folder, QStringLiteral("4_connected"), [](Interface &pages) {
        pages.orb.becomeSteam(true);
        pages.orb.becomeSteamVR(true);
        pages.orb.headsets.fill({{"D3A0017C4B2F91", "192.168.1.23", true, true}});
        pages.orb.becomeConnected(true,
                                  QCoreApplication::translate("ORBManager", "眼镜ID：") + "4B2F91");
    });
    take(folder, QStringLiteral("5_wired"), [](Interface &pages) {
        pages.orb.becomeWired(true);
        pages.orb.becomeSteam(true);
    });
    checks::Table rows = checks::table();
    for (checks::Check &row : rows) {
        row.surface = checks::Surface::Card;
        take(folder, "finding " + QLatin1String(row.id), [&](Interface &pages) {
            pages.checks.showAll({{&row, {}}});
        });
    }
    take(folder, QStringLiteral("findings in the details"), [&](Interface &pages) {
        pages.orb.becomeConnected(true);
        pages.window()->setProperty("ispullDown", true);
        pages.checks.showAll({{&rows[0], {}}, {&rows[2], {}}, {&rows[5], {}}});
    });
    for (const DialogState &state : dialogStates()) {
        const QString name = QLatin1String(state.name);
        take(folder, "dialog " + name, state.show);
    }
    {
        Interface pages;
        pages.orb.hideSelectPage = false;
        pages.load();
        pages.settle();
        pages.window()->grabWindow().save(folder.filePath("6_select_mode.png"));
    }
    {
        Interface pages;
        pages.loadAlone(QStringLiteral("qrc:/qml/windows/SingleAppTip.qml"));
        pages.settle();
        pages.window()->grabWindow().save(folder.filePath("7_second_copy.png"));
    }
    for (const QString key : {"steamvr", "cell", "adb"}) {
        Interface pages;
        pages.loadAlone(QStringLiteral("qrc:/qml/windows/WaitNotice.qml"),
                        {{"key", key}, {"canEnd", key == "steamvr"}, {"lasted", 31}});
        pages.settle();
        pages.window()->grabWindow().save(folder.filePath("8_wait_" + key + ".png"));
    }
    return 0;
}
