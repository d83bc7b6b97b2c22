import QtQuick
import QtQuick.Templates as T

T.TextField {
    id: field

    property bool bad: false

    implicitHeight: Math.max(34, contentHeight + 14)
    leftPadding: 10; rightPadding: 10
    verticalAlignment: TextInput.AlignVCenter
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentInk
    selectByMouse: true
    font { family: Theme.family; pixelSize: Theme.title }
    opacity: enabled ? 1 : 0.6
    Accessible.ignored: !visible
    background: Rectangle {
        radius: Theme.controlRadius
        color: Theme.field
        border { width: field.activeFocus ? 2 : 1; color: field.activeFocus ? Theme.accentText : field.bad ? Theme.bad : Theme.edge }
    }
}
