#include "demonstration/pictures.h"

#include <QPainter>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QQuickWindow>
#include <QSharedPointer>

#include <utility>

namespace pictures {

void take(QQuickWindow &window, QObject *context, std::function<void(const QImage &)> then)
{
    const QImage picture = window.grabWindow();
    if (!picture.isNull()) {
        then(picture);
        return;
    }
    // A platform without a screen has no picture of the window; its content can
    // be drawn once more.
    const QSharedPointer<QQuickItemGrabResult> grab = window.contentItem()->grabToImage();
    if (!grab) {
        then({});
        return;
    }
    QObject::connect(grab.data(), &QQuickItemGrabResult::ready, context,
                     [grab, then = std::move(then)] { then(grab->image()); });
}

QImage together(const QList<QQuickWindow *> &windows)
{
    QImage picture;
    for (QQuickWindow *window : windows) {
        const QImage part = window->grabWindow();
        if (picture.isNull())
            picture = part;
        else
            QPainter(&picture).drawImage(window->position() - windows.first()->position(), part);
    }
    return picture;
}

} // namespace pictures
