// The main function of a test program with windows.
#pragma once

#include <QGuiApplication>
#include <QQuickWindow>
#include <QTest>

#include <memory>

#if defined(__SANITIZE_ADDRESS__)
#define KOLM_LEAKS_ARE_COUNTED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KOLM_LEAKS_ARE_COUNTED
#endif
#endif
#ifdef KOLM_LEAKS_ARE_COUNTED
#include <sanitizer/lsan_interface.h>

// Qt Quick's software renderer keeps the textures of closed windows. The library
// holds no objects of ours.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libQt5Quick.so\n";
}
#endif

// Qt's offscreen platform never gives back its screen; whatever is made while
// the application starts is therefore not counted as leaked.
inline std::unique_ptr<QGuiApplication> makeGuiApplication(int &argc, char **argv)
{
#ifdef KOLM_LEAKS_ARE_COUNTED
    const __lsan::ScopedDisabler uncounted;
#endif
    return std::make_unique<QGuiApplication>(argc, argv);
}

// Windows are drawn by the processor, so that no test needs a graphics driver; with
// OpenGL where the environment says by which loop of Qt Quick.
#define KOLM_GUI_TEST_MAIN(TestClass)                                                              \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        if (!qEnvironmentVariableIsSet("QSG_RENDER_LOOP"))                                         \
            QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);                    \
        const std::unique_ptr<QGuiApplication> app = makeGuiApplication(argc, argv);               \
        QGuiApplication::setQuitOnLastWindowClosed(false);                                         \
        QCoreApplication::setOrganizationName(QStringLiteral("KOLM"));                             \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
