// What the tests of the controller and its parts share.
#pragma once

#include "config/link_kind.h"
#include "tests/controller/controller_fixture.h"
#include "tests/support/test_case.h"

#include <QJsonDocument>
#include <QJsonObject>

Q_DECLARE_METATYPE(LinkKind)

class ControllerTest : public TestCase
{
protected:
    // The settings of a run over this link, whose last headset was a D3.
    void store(LinkKind kind) const
    {
        const QJsonObject settings{{"wiredOrWireless", static_cast<int>(kind)}, {"lastSn", "D3A"}};
        writeFile("set.json", QJsonDocument(settings).toJson());
    }
    QJsonObject storedSettings() const { return readJson("set.json"); }
    QJsonObject storedSettings(const QString &model) const
    {
        return storedSettings().value(model).toObject();
    }

    // So often do the polls not find SteamVR, while it restarts for example.
    void announceMisses(int count)
    {
        for (int miss = 1; miss <= count; ++miss)
            announce(QStringLiteral("[steam] hasLaunchSteamVR:false; switch: %1").arg(miss));
    }
};
