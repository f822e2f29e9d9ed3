// What somebody at the screen sees there, and can do.
#pragma once

#include <QPoint>
#include <QString>

#include <optional>

// An item, by its objectName: the `number`th one of that name from above, the
// window in front before those behind it. Only what is shown counts.
struct ItemName
{
    QString name;
    int number = 1;
};

// What came of it: what there is to answer, or why it cannot be done.
struct Reply
{
    bool done = true;
    QString text = QStringLiteral("ok");

    static Reply answer(const QString &text) { return {true, text}; }
    static Reply cannot(const QString &reason) { return {false, reason}; }
};

// GUI thread.
class Screen
{
public:
    Screen() = default;
    virtual ~Screen() = default;

    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    // The middle of the item on the screen; nothing unless it is shown.
    virtual std::optional<QPoint> middleOf(const ItemName &item) const = 0;
    // The file of the dialog that is shown, without folder and suffix; empty
    // when there is none.
    virtual QString dialog() const = 0;
    // Whether a toast is shown; nothing where there can be none.
    virtual std::optional<bool> toast() const = 0;
    // Whether all windows that are shown have arrived on the screen.
    virtual bool isComplete() const = 0;

    // With the left button; false when no such item is shown.
    virtual bool click(const ItemName &item) = 0;
    // One key for the window in front, others held with it ("Shift+Tab").
    virtual Reply pressKeys(const QString &keys) = 0;
    virtual Reply typeText(const QString &text) = 0;
    // Of all windows, into a PNG file.
    virtual Reply takePicture(const QString &path) = 0;

    // The main window.
    virtual void activate() = 0;
    virtual void minimise() = 0;
    virtual void hide() = 0;
    virtual void show() = 0;
    // How often it was drawn since this was asked before.
    virtual int framesDrawn() = 0;
};
