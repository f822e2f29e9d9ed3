// The real pages, loaded over stand-ins for the objects behind them.
#pragma once

#include "base/manual_clock.h"
#include "checks/check_model.h"
#include "controller/changes_model.h"
#include "controller/connection_stages.h"
#include "controller/feedback_status.h"
#include "controller/stage_model.h"
#include "controller/usage_switch.h"
#include "session/change_record.h"
#include "tests/qml/fake_orb.h"
#include "ui/frameless_quick_window.h"

#include <QDir>
#include <QQmlAbstractUrlInterceptor>
#include <QQmlApplicationEngine>
#include <QQuickItem>

#include <memory>

// Registers the types and resources that the pages need. Once a program. Timers of
// pages go by the clock of the Interface that was made last.
void registerInterface();

// Notes the size with which the system first sees a window.
class FirstSize : public QObject
{
    Q_OBJECT

public:
    FirstSize();
    QSize size;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
};

// Gives the main window a stand-in instead of each dialog.
class StandInDialogs : public QQmlAbstractUrlInterceptor
{
public:
    QUrl intercept(const QUrl &url, DataType type) override;
};

class Interface
{
public:
    Interface();
    ~Interface();

    // The time that the timers of the pages go by.
    ManualClock clock;

    // Change these before load().
    FakeOrb orb;
    FakeUpdate update{orb};
    ConnectionStages stages;
    int forgotten = 0; // how often usage events were to be dropped
    ChangeRecord record{QDir::currentPath(), QStringLiteral("C:/KOLM")};
    ChangesModel changes{record};
    FeedbackStatus feedback;
    FeedbackStatus::State feedbackBecomes = FeedbackStatus::Sent; // when it is handed in
    UsageSwitch usage{QDir::currentPath(), [this] { ++forgotten; }};
    CheckModel checks;
    bool hasChecks = true; // whether there is anything to show findings of
    bool hasUpdate = true; // whether there is an update checker at all
    bool realDialogs = true;

    // Loads the main window. Null when it cannot be made.
    FramelessQuickWindow *load();
    // Has stand-ins loaded for the dialogs from now on; load() does it unless
    // `realDialogs`.
    void standInPages();
    // Loads another window; it gets no controller.
    FramelessQuickWindow *loadAlone(const QString &url, const QVariantMap &properties = {});
    // The exit codes that the pages have asked for so far.
    QList<int> exitCodes() const { return exitCodes_; }

    FramelessQuickWindow *window() const { return window_; }
    // How large the window was when the system came to know it, which is what it
    // places the window by.
    QSize firstSize() const { return firstSize_.size; }
    // The dialog that is open, null if none is, and the file it was asked for as.
    FramelessQuickWindow *dialog() const;
    QString dialogFile() const;
    // What the open dialog shows, and a key for it.
    QStringList dialogTexts() const;
    void press(Qt::Key key);
    // A named item that the open dialog shows; null if there is none.
    QQuickItem *inDialog(const QString &objectName) const;
    // The choice of this value among those of a named setting in the open dialog.
    QQuickItem *option(const QString &setting, int value) const;
    // A named object of the window; null if there is none. Also finds what a
    // list or repeater made.
    QObject *find(const QString &objectName) const;
    QQuickItem *item(const QString &objectName) const;
    // Whether the item is shown, with everything around it.
    bool shown(const QString &objectName) const;
    QString text(const QString &objectName, const char *property = "text") const;
    // What a name of an enum in the pages stands for, e.g. "StatusMark.Done".
    int value(const QString &name) const;
    // Whether the property of a named object has the value of that name.
    bool is(const QString &objectName, const char *property, const QString &name) const;

    // Places everything. Layouts and lists do so only when a frame is about to
    // be drawn, and one may follow another.
    void settle() const;
    // Settles and then waits until the window has the keyboard.
    void activate() const;
    // Works the item with the mouse, in its middle.
    void click(const QString &objectName);
    void click(QQuickItem *item);
    // The button with this text that is shown, below `root` or in the window.
    QQuickItem *button(const QString &text, QQuickItem *root = nullptr) const;

    // All shown items below `root`, itself included.
    static QList<QQuickItem *> shownItems(QQuickItem *root);
    // All texts that are shown below `root`, in the order of the items.
    static QStringList texts(QQuickItem *root);

private:
    StageModel stageModel_{stages};
    StandInDialogs standIns_;
    QQmlApplicationEngine engine_;
    QList<int> exitCodes_;
    FramelessQuickWindow *window_ = nullptr;
    FirstSize firstSize_;
};

// The loaded main window over stand-ins for its dialogs.
class StandIns : public Interface
{
public:
    StandIns()
    {
        realDialogs = false;
        load();
    }
};
