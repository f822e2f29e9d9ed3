// The main function of a test program with windows.
#pragma once

#include <QGuiApplication>
#include <QQuickWindow>
#include <QTest>

// Windows are drawn by the processor, so that no test needs a graphics driver.
#define KOLM_GUI_TEST_MAIN(TestClass)                                                              \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);                        \
        QGuiApplication app(argc, argv);                                                           \
        QGuiApplication::setQuitOnLastWindowClosed(false);                                         \
        QCoreApplication::setOrganizationName(QStringLiteral("KOLM"));                             \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
