#include "app/start_up.h"

#include "app/application_font.h"
#include "app/composition.h"
#include "app/crash_record.h"
#include "app/give_back_command.h"
#include "app/log_file.h"
#include "app/qml_loading.h"
#include "app/session_guard.h"
#include "app/surroundings.h"
#include "app/translation.h"
#include "app/wait_notice_program.h"
#include "base/clock.h"
#include "base/console.h"
#include "cloud/cloud_host.h"
#include "pc/own_variables.h"
#include "pc/session_end.h"
#include "pc/single_instance.h"
#include "sysinfo/system_info.h"
#include "ui/frameless_quick_window.h"
#include "ui/qml_types.h"
#include "ui/renderer.h"
#include "ui/wait_notice.h"

#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QLocale>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QStandardPaths>
#include <QUrl>

#include <iostream>
#include <memory>

namespace {

// What the program is started for when another copy of it waits; nothing otherwise.
std::optional<wait_notice::Request> waitNotice(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return wait_notice::request(arguments);
}

// What Qt reads before the first window, or the application object, is made.
void chooseHowToDraw()
{
    // All images together are small: without these, Qt Quick keeps a texture as
    // large as the window for them, which a game could use.
    for (const char *side : {"QSG_ATLAS_WIDTH", "QSG_ATLAS_HEIGHT"}) {
        if (!qEnvironmentVariableIsSet(side))
            own_variables::set(side, "512");
    }

    // Letters as the system draws them: sharper at these sizes than those that
    // Qt Quick makes for scaling, and there much sooner.
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
}

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
}

// Language, font, icon and names, in this order.
void setUp(QGuiApplication &app, const QLocale &locale)
{
    installTranslation(locale.language(), &app);
    setApplicationFont(QStringLiteral(":/res/SourceHanSansCN-Medium.ttf"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/res/image/orb.ico")));
    QCoreApplication::setOrganizationName(QStringLiteral("KOLM"));
    // The log, the settings and the recent headsets go there; none of them
    // makes the folder.
    QDir().mkpath(dataFolder());
}

// As loadWindow(), with what this PC can draw with. Without OpenGL, on a remote
// desktop for example, Qt Quick would end the program.
void loadFirstWindow(QQmlApplicationEngine &engine, const char *url)
{
    const renderer::Trial trial(dataFolder() + QStringLiteral("/opengl.trial"), Clock::system());
    loadWindow(engine, QUrl(QString::fromLatin1(url)));
}

// Runs until the window is closed. The pages show it before they ask what takes long,
// and whoever closed it by then has ended an event loop that was not there yet.
int runUntilClosed(QGuiApplication &app, bool wasClosed)
{
    if (wasClosed)
        QMetaObject::invokeMethod(&app, &QCoreApplication::quit, Qt::QueuedConnection);
    return QGuiApplication::exec();
}

} // namespace

int runAssistant(int argc, char **argv, Surroundings &surroundings)
{
    // Narrow and wide console output are used side by side.
    std::ios::sync_with_stdio(false);
    console::neverWait();
    if (const auto notice = waitNotice(argc, argv))
        return runWaitNotice(argc, argv, *notice);
    chooseHowToDraw();
    if (const std::optional<int> code = surroundings.begin())
        return *code;

    if (const std::optional<int> code = giveBackIfAsked(argc, argv))
        return *code;

    QGuiApplication app(argc, argv);
    installLogFile();
    initProgramResources();
    const QLocale locale;
    setUp(app, locale);
    crash_record::arm(dataFolder(), SystemInfo::assistantVersion());
    surroundings.onApplication();

    bool wasClosed = false;
    // Outlives the pages, which read it, and ends before the application: that waits
    // for whatever Qt has under way, and nothing of ours may be lost meanwhile.
    std::unique_ptr<Composition> composition;
    QQmlApplicationEngine engine;
    QObject::connect(&engine, &QQmlEngine::quit, &app, [&wasClosed] { wasClosed = true; });
    FramelessQuickWindow::setSharedEngine(&engine);
    registerUiTypes();
    const SingleInstance instance;
    if (instance.isFirst()) {
        if (const std::optional<QString> cloudHost = surroundings.cloudHost())
            cloud::useHost(*cloudHost);
        // What the broken run left is put right by the start itself: it takes back our
        // registration, ends a SteamVR that still runs, and reads the settings as they
        // were stored last.
        const bool isRepair = crash_record::take(dataFolder()).has_value();
        composition = std::make_unique<Composition>(locale, &app);
        const SessionGuard guard([&composition] { composition->endSession(); },
                                 session_end::endProcess);
        composition->publish(engine);
        surroundings.onPublished(engine);
        loadFirstWindow(engine, "qrc:/qml/mainWindow.qml");
        surroundings.attach(engine, &composition->stages());
        composition->windowIsThere();
        if (isRepair)
            composition->tellOfCrash();
        return surroundings.exitCode(runUntilClosed(app, wasClosed));
    }
    const SessionGuard guard([] {}, session_end::endProcess);
    loadFirstWindow(engine, "qrc:/qml/windows/SingleAppTip.qml");
    surroundings.attach(engine, nullptr);
    return surroundings.exitCode(runUntilClosed(app, wasClosed));
}
