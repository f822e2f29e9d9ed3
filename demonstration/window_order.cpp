#include "demonstration/window_order.h"

#include <QGuiApplication>
#include <QQuickWindow>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

#include <xcb/xcb.h>

namespace {

struct Freed
{
    void operator()(void *reply) const { std::free(reply); }
};
using Tree = std::unique_ptr<xcb_query_tree_reply_t, Freed>;

// A conversation of its own with the X server.
class Screen
{
public:
    Screen() : connection_(xcb_connect(nullptr, nullptr)) {}
    ~Screen() { xcb_disconnect(connection_); }

    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    // What lies on the screen, from behind; empty when nobody answers.
    std::vector<xcb_window_t> fromBehind() const
    {
        if (xcb_connection_has_error(connection_) != 0)
            return {};
        const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        const Tree tree = treeOf(screen->root);
        if (!tree)
            return {};
        const xcb_window_t *first = xcb_query_tree_children(tree.get());
        return {first, first + xcb_query_tree_children_length(tree.get())};
    }

    // What the window lies in on the screen: a window manager puts a frame
    // around it.
    xcb_window_t outermost(xcb_window_t window) const
    {
        for (;;) {
            const Tree tree = treeOf(window);
            if (!tree || tree->parent == tree->root || tree->parent == XCB_WINDOW_NONE)
                return window;
            window = tree->parent;
        }
    }

private:
    Tree treeOf(xcb_window_t window) const
    {
        return Tree(
            xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
    }

    xcb_connection_t *const connection_;
};

} // namespace

QList<QQuickWindow *> window_order::fromBehind(const QList<QQuickWindow *> &windows)
{
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return windows;
    // What the program asked for until now has to have arrived.
    QGuiApplication::sync();
    const Screen screen;
    const std::vector<xcb_window_t> order = screen.fromBehind();
    if (order.empty())
        return windows;
    const auto place = [&](QQuickWindow *window) {
        return std::find(order.begin(), order.end(),
                         screen.outermost(static_cast<xcb_window_t>(window->winId())));
    };
    QList<QQuickWindow *> sorted = windows;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [&](QQuickWindow *a, QQuickWindow *b) { return place(a) < place(b); });
    return sorted;
}
