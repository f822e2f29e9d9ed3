"""What the program lives through on each PC, until it is closed.

A step `seen TEXT` waits for a line of SIMPC_FACE; everything else is told to the
program (simpc/README.md). Each life ends in the middle between two looks, which are
5 s apart.
"""
import typing


class Life(typing.NamedTuple):
    scenario: str
    plan: list


CONNECTED, LOST = 'seen orb.vrIsConnect = true', 'seen orb.vrIsConnect = false'
STEAMVR = 'seen orb.haslaunchSteamVR = true'
USUAL = [CONNECTED, 'wait 13']
OTHERS = {
    'external-server': [STEAMVR, 'wait 13'],
    'first-run': ['wait 12'],
    'headset-drops-and-returns': [CONNECTED, LOST, CONNECTED, 'wait 13'],
    'no-steam': ['wait 40'],
    'on-battery': [CONNECTED, 'seen orb.closePowerTip', 'wait 8'],
    'ports-taken': [CONNECTED, 'wait 48'],
    'server-never-comes': [STEAMVR, 'wait 13'],
    'steamvr-restart': [CONNECTED, LOST, CONNECTED, 'wait 13'],
    'surround-speakers': [CONNECTED, 'seen audio supoort :2Headphones', 'wait 8'],
    'too-slow-steam': ['seen orb.haslaunchSteam = true', 'wait 13'],
    'two-headsets': ['seen orb.showMoreHMD', 'wait 13'],
    'update-mandatory': ['seen orbupdate.downExeFinish', 'seen vrserver.exe detected', 'wait 5'],
    'wired-adb-hangs': [STEAMVR, 'wait 23'],
    'wired-and-wireless': [CONNECTED, LOST, CONNECTED, 'seen orb.wired = false',
                           'seen The command is LinkTo', 'seen vr reconnect sn', 'wait 13'],
    'wired-no-adb': [STEAMVR, 'wait 13'],
    'wired-second-headset': [CONNECTED, LOST, CONNECTED, 'wait 13'],
    'wired-unplugged-and-back': [CONNECTED, LOST, CONNECTED, 'wait 13'],
}
# With somebody at the screen.
VISITED = {
    'first-run.wireless-is-chosen': Life('first-run', [
        'until shown chooseWireless', 'click chooseWireless', CONNECTED, 'wait 13']),
    'two-headsets.one-is-chosen-and-left': Life('two-headsets', [
        'until dialog MoreSettingPage', 'click connect 2', CONNECTED, 'wait 13',
        'click stopStreaming', LOST, 'wait 13']),
    'steam-already-running.settings': Life('steam-already-running', [
        CONNECTED, 'until toast gone', 'click setting', 'until dialog SettingPage',
        'click option0', 'click option0 2', 'click confirm', 'until nodialog',
        LOST, CONNECTED, 'wait 13']),
    'steam-already-running.feedback': Life('steam-already-running', [
        CONNECTED, 'until toast gone', 'click feedback', 'until dialog FeedbackPage',
        'type It stutters', 'key Tab', 'type me', 'key Return', 'until shown thanks',
        'key Return', 'until nodialog', 'wait 13']),
    'wired-headset-at-start.link-is-switched': Life('wired-headset-at-start', [
        CONNECTED, 'until toast gone', 'click switchMode', 'until dialog ConfirmPage',
        'click confirm', 'seen startSteamVR', 'seen vrserver.exe detected', 'wait 12']),
    'update-offered.it-is-installed': Life('update-offered', [
        'seen orbupdate.downExeFinish', 'seen vrserver.exe detected', 'wait 5',
        'until dialog UpdatePage', 'click confirm']),
}
# The longest, which begin first so that all end together.
LONG = ['wired-and-wireless', 'headset-drops-and-returns', 'steamvr-restart', 'on-battery',
        'ports-taken', 'surround-speakers', 'too-slow-steam', 'wired-unplugged-and-back',
        'wired-offline-headset', 'wired-second-headset', 'slow-steam', 'no-steam']


def of(scenarios):
    """name -> life, for each of the scenarios, and those with somebody at the screen."""
    every = {name: Life(name, OTHERS.get(name, USUAL)) for name in scenarios}
    every.update(VISITED)
    return {name: every[name] for name in
            sorted(every, key=lambda name: LONG.index(name) if name in LONG else len(LONG))}


def races(name):
    """Whether a cable, adb or a restart meets a look, and either may be first."""
    return name.startswith('wired-') or name in (
        'steamvr-restart', 'steam-already-running.settings')
