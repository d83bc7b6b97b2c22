import QtQuick
import QtQuick.Templates as T

T.Button {
    id: control

    property bool primary: false
    property bool busy: false
    property string symbol
    readonly property color ink: primary ? Theme.accentInk : Theme.text

    implicitWidth: Math.max(implicitContentWidth + leftPadding + rightPadding, 30)
    implicitHeight: Math.max(30, implicitContentHeight + 12)
    leftPadding: 12; rightPadding: 12
    opacity: enabled && !busy ? 1 : 0.45
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Accessible.name: text
    Accessible.description: busy ? Texts.busy : enabled ? "" : Texts.dimmed
    Accessible.ignored: !visible
    Accessible.onPressAction: if (enabled) clicked()

    contentItem: Item {
        implicitWidth: row.implicitWidth; implicitHeight: row.implicitHeight
        Row {
            id: row
            anchors.centerIn: parent
            spacing: 6
            Spinner { visible: control.busy; color: control.ink; anchors.verticalCenter: parent.verticalCenter }
            Symbol {
                visible: !!control.symbol && !control.busy
                name: control.symbol; size: 15; color: control.ink
                anchors.verticalCenter: parent.verticalCenter
            }
            Label {
                text: control.text; color: control.ink; font.weight: Font.Medium
                anchors.verticalCenter: parent.verticalCenter
            }
        }
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: control.primary ? (control.down ? Qt.darker(Theme.accent, 1.2) : control.hovered ? Qt.darker(Theme.accent, 1.08) : Theme.accent)
                               : control.down ? Theme.fillDown : control.hovered ? Theme.fillHover : Theme.fill
        border { width: Theme.highContrast ? 1 : 0; color: Theme.edge }
        Behavior on color { enabled: Theme.fast > 0; ColorAnimation { duration: Theme.fast } }
        FocusRing { visible: control.visualFocus }
    }
}
