// The screen with the program's windows.
#pragma once

#include "demonstration/screen.h"

#include <QList>

#include <atomic>
#include <memory>

class QQuickItem;
class QQuickWindow;

class QuickScreen final : public Screen
{
public:
    // `main` is the main window; nothing is asked or done once it is gone.
    explicit QuickScreen(QQuickWindow &main);

    std::optional<QPoint> middleOf(const ItemName &item) const override;
    QString dialog() const override;
    std::optional<bool> toast() const override;
    bool isComplete() const override;
    bool click(const ItemName &item) override;
    Reply pressKeys(const QString &keys) override;
    Reply typeText(const QString &text) override;
    Reply takePicture(const QString &path) override;
    void activate() override;
    void minimise() override;
    void hide() override;
    void show() override;
    int framesDrawn() override;

private:
    QList<QQuickWindow *> shownWindows() const;
    QQuickItem *find(const ItemName &item) const;

    QQuickWindow &main_;
    const std::shared_ptr<std::atomic<int>> frames_; // the render thread counts them
};
