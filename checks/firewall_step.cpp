#include "checks/firewall_step.h"

#include "link/headset_link.h"
#include "steamvr/steam_manager.h"

#include <QDebug>

void firewall_step::run(const QString &steamVRPath, SteamManager &steam,
                        const std::function<HeadsetLink &()> &link)
{
    if (steamVRPath.isEmpty())
        return;
    steam.setVrstartupPath(steamVRPath);
    if (steam.hasFirewallRule(steamVRPath)) {
        qInfo("has register ORB firewall");
        return;
    }
    qInfo("need register ORB firewall");
    link().setRegisterFirewallPending();
}
