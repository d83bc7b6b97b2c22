import QtQuick
import QtQuick.Templates as T

// A switch with its text; the whole row is the control. It shows `on`, and asks for the other state when it is used.
T.Switch {
    id: control

    property bool on: false
    property string detail
    property string symbol
    property int inset: Theme.indent
    property int corner: 0
    signal switched(bool on)

    implicitHeight: Math.max(detail ? 54 : Theme.row, texts.implicitHeight + 18)
    checked: on
    // A click has overwritten the binding; what was asked for may not come about.
    onClicked: { switched(checked); checked = Qt.binding(() => on) }
    Keys.onReturnPressed: switched(!on)
    Keys.onEnterPressed: switched(!on)
    Accessible.name: text
    Accessible.description: detail
    Accessible.checkable: true
    Accessible.checked: on
    Accessible.focusable: true
    Accessible.ignored: !visible
    Accessible.onToggleAction: if (enabled) switched(!on)
    Accessible.onPressAction: if (enabled) switched(!on)

    contentItem: Item {
        Symbol {
            visible: !!control.symbol
            anchors { left: parent.left; leftMargin: 21; verticalCenter: parent.verticalCenter }
            name: control.symbol; size: 20; color: Theme.secondary
        }
        Column {
            id: texts
            anchors { left: parent.left; leftMargin: control.inset; right: track.left; rightMargin: 12; verticalCenter: parent.verticalCenter }
            spacing: 3
            opacity: control.enabled ? 1 : 0.45
            Label { width: parent.width; text: control.text; wrapMode: Text.Wrap }
            Label {
                width: parent.width; visible: !!text; text: control.detail; wrapMode: Text.Wrap
                color: Theme.secondary; font.pixelSize: Theme.small
            }
        }
        Rectangle {
            id: track
            anchors { right: parent.right; rightMargin: 16; verticalCenter: parent.verticalCenter }
            width: 40; height: 24; radius: 12
            color: control.on ? Theme.accent : Theme.track
            border { width: Theme.highContrast ? 1 : 0; color: Theme.edge }
            opacity: control.enabled ? 1 : 0.45
            Behavior on color { enabled: Theme.slow > 0; ColorAnimation { duration: Theme.slow } }
            Rectangle {
                readonly property bool atEnd: control.on !== control.mirrored
                x: atEnd ? parent.width - width - 2.5 : 2.5; y: 2.5
                width: control.down ? 21 : 19; height: 19; radius: 9.5
                color: "#ffffff"; border { width: 1; color: "#14000000" }
                Behavior on x { enabled: Theme.slow > 0; NumberAnimation { duration: Theme.slow; easing.type: Easing.OutCubic } }
            }
            FocusRing { visible: control.visualFocus }
        }
    }
    background: Rectangle {
        color: control.hovered && control.enabled ? Theme.rowHover : "transparent"
        radius: control.corner
    }
}
