// Which proxies lead from this PC to a host.
#pragma once

#include "base/background.h"

#include <QHash>
#include <QList>
#include <QNetworkProxy>
#include <QObject>
#include <QSet>
#include <QString>
#include <QUrl>

#include <functional>
#include <vector>

class QNetworkAccessManager;

// Left to itself, `network` asks the system whenever it sends something, on its own
// thread; Windows may take seconds to find out what a network wants. Here the system
// is asked on another thread, and a request waits for that. On the thread of `network`.
class ProxyFinder : public QObject
{
    Q_OBJECT

public:
    using Proxies = QList<QNetworkProxy>;
    // May take seconds; called on a thread of its own.
    using Ask = std::function<Proxies(const QUrl &url)>;
    static Proxies askSystem(const QUrl &url);

    // `network` outlives it. Without `ask` all hosts are reached directly.
    ProxyFinder(QNetworkAccessManager &network, Ask ask, QObject *parent = nullptr);
    ~ProxyFinder() override;

    // Calls `then`, unless `context` is gone by then, when `network` knows how to
    // reach the host: at once if it was asked for it before. It is asked again then,
    // for the next time: networks change.
    void find(const QUrl &url, QObject *context, std::function<void()> then);

    // While it is held nobody is asked; what is to be found meanwhile waits.
    void hold() { isHeld_ = true; }
    void release();

private:
    class Known;
    struct Waiting
    {
        QUrl url;
        std::function<void()> then;
    };
    void ask(const QUrl &url);
    void onAnswer(const QString &host, const Proxies &proxies);

    const Ask ask_;
    Known *known_; // owned by `network`
    std::vector<Waiting> waiting_;
    QSet<QString> asking_; // hosts
    bool isHeld_ = false;
    Background background_;
};
