#include "app/wait_notice_program.h"

#include "app/application_font.h"
#include "app/composition.h"
#include "app/qml_loading.h"
#include "app/translation.h"
#include "base/threads.h"
#include "ui/frameless_quick_window.h"
#include "ui/qml_types.h"
#include "ui/wait_notice.h"

#include <QGuiApplication>
#include <QIcon>
#include <QLocale>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QUrl>
#include <QVariantMap>

#include <cstdio>
#include <cstdlib>
#include <thread>

namespace {

// Its standard input is a pipe that nobody writes to: it ends when the other end
// goes, whoever or whatever ended that process.
void endWithParent()
{
    std::thread watch = threads::begin("the end of who waits", [] {
        while (std::getchar() != EOF) {
        }
        std::_Exit(wait_notice::exitKeepWaiting);
    });
    if (watch.joinable())
        watch.detach();
}

} // namespace

int runWaitNotice(int argc, char **argv, const wait_notice::Request &request)
{
    // One small window for some seconds, beside whatever makes the PC slow: the way
    // to draw that needs least, and cannot fail.
    QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    QGuiApplication app(argc, argv);
    initProgramResources();
    installTranslation(QLocale().language(), &app);
    setApplicationFont(QStringLiteral(":/res/SourceHanSansCN-Medium.ttf"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/res/image/orb.ico")));
    endWithParent();

    QQmlApplicationEngine engine;
    FramelessQuickWindow::setSharedEngine(&engine);
    registerUiTypes();
    engine.setInitialProperties({{QStringLiteral("key"), request.subject.key},
                                 {QStringLiteral("canEnd"), request.subject.canEnd},
                                 {QStringLiteral("lasted"), int(request.lasted.count() / 1000)}});
    loadWindow(engine, QUrl(QStringLiteral("qrc:/qml/windows/WaitNotice.qml")));
    return QGuiApplication::exec();
}
