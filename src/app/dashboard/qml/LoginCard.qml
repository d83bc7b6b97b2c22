import QtQuick
import Brindlefox

Card {
    id: card

    required property LaunchAtLogin login

    ToggleRow {
        objectName: "launchAtLogin"
        width: parent.width
        symbol: "login"
        corner: Theme.radius - 1
        text: Texts.startAutomatically
        detail: ({[LaunchAtLogin.Starts]: Texts.startsAutomatically, [LaunchAtLogin.RequiresApproval]: Texts.approvalRequired,
                  [LaunchAtLogin.Unavailable]: Texts.launchUnavailable})[card.login.status] ?? ""
        on: card.login.enabled
        enabled: card.login.status !== LaunchAtLogin.Unavailable
        onSwitched: on => card.login.setEnabled(on)
    }
}
