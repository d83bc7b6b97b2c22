import QtQuick
import Brindlefox

// Asks whether a service may be used. Whoever is not sure says no: that is the default, and what Escape means.
FocusScope {
    id: dialog

    required property ConsentItem consent

    objectName: "consent"
    visible: !!consent.service
    onVisibleChanged: if (visible) no.forceActiveFocus(Qt.TabFocusReason)
    Accessible.role: Accessible.Dialog
    Accessible.name: Texts.consentTitle(consent.service)
    Accessible.description: Texts.consentText(consent.service)
    Accessible.ignored: !visible
    Keys.onEscapePressed: consent.dontAllow()

    Rectangle { anchors.fill: parent; color: Theme.scrim }
    MouseArea { anchors.fill: parent; hoverEnabled: true; acceptedButtons: Qt.AllButtons; onWheel: wheel => wheel.accepted = true; Accessible.ignored: true }
    Rectangle {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Theme.pad, 400)
        height: column.implicitHeight + 48
        radius: 16
        color: Theme.card
        border { width: 1; color: Theme.frame }

        Column {
            id: column
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 24 }
            spacing: 12
            Rectangle {
                readonly property string group: dialog.consent.service === "location" ? "locationMaps" : dialog.consent.service

                anchors.horizontalCenter: parent.horizontalCenter
                width: 52; height: 52; radius: 14
                color: Theme.tint(group)
                Symbol { anchors.centerIn: parent; name: dialog.visible ? Theme.symbol(parent.group) : ""; size: 30; color: "#ffffff" }
            }
            Heading {
                objectName: "consentTitle"
                width: parent.width
                text: Texts.consentTitle(dialog.consent.service)
                font.pixelSize: Theme.title + 2
                horizontalAlignment: Text.AlignHCenter; wrapMode: Text.Wrap
            }
            Label {
                objectName: "consentText"
                width: parent.width
                text: Texts.consentText(dialog.consent.service)
                color: Theme.secondary
                horizontalAlignment: Text.AlignHCenter; wrapMode: Text.Wrap
                lineHeight: 1.2
                spoken: true
            }
            Item { width: 1; height: 2 }
            Row {
                width: parent.width
                spacing: 10
                PushButton {
                    id: no
                    objectName: "dontAllow"
                    width: (parent.width - parent.spacing) / 2; height: 36
                    focus: true
                    primary: true
                    text: Texts.dontAllow
                    Accessible.defaultButton: true
                    KeyNavigation.tab: yes; KeyNavigation.backtab: yes; KeyNavigation.right: yes; KeyNavigation.left: yes
                    onClicked: dialog.consent.dontAllow()
                }
                PushButton {
                    id: yes
                    objectName: "allow"
                    width: no.width; height: no.height
                    text: Texts.allow
                    KeyNavigation.tab: no; KeyNavigation.backtab: no; KeyNavigation.left: no; KeyNavigation.right: no
                    onClicked: dialog.consent.allow()
                }
            }
        }
    }
}
