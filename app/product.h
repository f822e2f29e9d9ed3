// Everything of a first copy, put together.
#pragma once

class ConnectionRoad;
class ORBManager;
class ORBUpdate;
class QGuiApplication;
class QLocale;
class QQmlApplicationEngine;
class RoadModel;

// Makes the controller and the update checker, both owned by the application,
// which destroys them last. GUI thread.
class Product
{
public:
    Product(const QLocale &locale, QGuiApplication *app);

    // Lets the pages see them.
    void publish(QQmlApplicationEngine &engine) const;

    const ConnectionRoad &road() const;

private:
    ORBManager *orb_;
    ORBUpdate *update_;
    RoadModel *roadModel_; // owned by the controller
};

// Makes the compiled-in pages, images and fonts available.
void initProductResources();
