import QtQuick
import QtQuick.Templates as T

// A check box with its text and, beside that, where it belongs. As ToggleRow.
T.CheckBox {
    id: control

    property bool on: false
    property string detail
    signal switched(bool on)

    implicitHeight: Theme.row
    checked: on
    onClicked: { switched(checked); checked = Qt.binding(() => on) }
    Accessible.name: text
    Accessible.description: detail
    Accessible.checkable: true
    Accessible.checked: on
    Accessible.focusable: true
    Accessible.ignored: !visible
    Accessible.onToggleAction: if (enabled) switched(!on)
    Accessible.onPressAction: if (enabled) switched(!on)

    contentItem: Item {
        Rectangle {
            id: box
            anchors { left: parent.left; leftMargin: Theme.indent; verticalCenter: parent.verticalCenter }
            width: 18; height: 18; radius: 5
            color: control.on ? Theme.accent : "transparent"
            border { width: control.on ? 0 : 1.5; color: Theme.edge }
            Symbol { anchors.centerIn: parent; name: "check"; size: 13; color: Theme.accentInk; visible: control.on }
            FocusRing { visible: control.visualFocus }
        }
        Label {
            id: title
            anchors { left: box.right; leftMargin: 12; verticalCenter: parent.verticalCenter }
            width: Math.min(implicitWidth, parent.width - x - 16 - (control.detail ? 110 : 0))
            text: control.text; maximumLineCount: 1
        }
        Label {
            anchors { left: title.right; leftMargin: 10; right: parent.right; rightMargin: 16; baseline: title.baseline }
            text: control.detail; maximumLineCount: 1
            color: Theme.secondary; font.pixelSize: Theme.small
        }
    }
    background: Rectangle { color: control.hovered ? Theme.rowHover : "transparent" }
}
