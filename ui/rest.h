// Nothing of the graphics card for windows that nobody looks at.
#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickWindow>

// The type Rest of QML. While it is allowed and the window is minimised, all windows
// of the program give back what they hold of the graphics card, and the process asks
// the system for the efficient power mode. What they need they make anew when they are
// seen again.
//
// GUI thread only. The window is not owned.
class Rest : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QQuickWindow *window READ window WRITE setWindow NOTIFY windowChanged)
    Q_PROPERTY(bool allowed READ isAllowed WRITE setAllowed NOTIFY allowedChanged)

public:
    explicit Rest(QObject *parent = nullptr);
    ~Rest() override;

    QQuickWindow *window() const { return window_; }
    void setWindow(QQuickWindow *window);
    bool isAllowed() const { return allowed_; }
    void setAllowed(bool allowed);

signals:
    void windowChanged();
    void allowedChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void update();
    void begin();
    void end();

    QPointer<QQuickWindow> window_;
    bool allowed_ = false;
    bool resting_ = false;
};
