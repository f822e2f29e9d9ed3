// The real program on a screen, worked with the mouse and the keys of that
// screen: the events go through the window system.
#pragma once

#include "tests/e2e/program.h"
#include "tests/support/test_case.h"

#include <QGuiApplication>

#include <memory>

class WindowFixture : public TestCase
{
    Q_OBJECT

protected:
    // A program that does what it is told; every line must be carried out.
    Program &start(const QString &scenario)
    {
        program_ = std::make_unique<Program>(dir(), scenario);
        program_->environment.insert("QT_QPA_PLATFORM", "xcb");
        program_->environment.insert("SIMPC_DIRECTED", "1");
        program_->environment.remove("SIMPC_LIMIT");
        return *program_;
    }
    QString tell(const QString &line) { return program_->tell(line); }
    // With the mouse of the screen.
    void clickOn(const QString &name)
    {
        const QStringList place = tell("where " + name).split(' ');
        click(place);
        tell(QStringLiteral("wait 1"));
    }
    // There, as the answer to "where" says it.
    static void click(const QStringList &place)
    {
        QCOMPARE(place.value(0), QStringLiteral("at"));
        xdo({"mousemove", place.value(1), place.value(2), "click", "1"});
    }
    // With the keyboard of the screen.
    void press(const QStringList &keys)
    {
        for (const QString &key : keys) {
            xdo({"key", key});
            tell(QStringLiteral("wait 1"));
        }
    }
    static void xdo(const QStringList &arguments)
    {
        QCOMPARE(QProcess::execute(XDOTOOL, arguments), 0);
    }

    std::unique_ptr<Program> program_;

protected slots:
    // Whatever a test did, no page has complained.
    void cleanup()
    {
        QString said;
        if (program_) {
            said = program_->log() + program_->errors();
            program_->kill();
            program_.reset();
        }
        TestCase::cleanup();
        QVERIFY2(!said.contains("qrc:/"), qPrintable(said));
    }
};

#define KOLM_WINDOW_TEST_MAIN(TestClass)                                                           \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        QGuiApplication app(argc, argv);                                                           \
        QGuiApplication::setQuitOnLastWindowClosed(false);                                         \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
