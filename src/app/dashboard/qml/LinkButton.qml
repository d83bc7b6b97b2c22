import QtQuick
import QtQuick.Templates as T

T.Button {
    id: control

    implicitWidth: implicitContentWidth + 12
    implicitHeight: Math.max(26, implicitContentHeight + 8)
    leftPadding: 6; rightPadding: 6
    opacity: enabled ? 1 : 0.45
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Accessible.name: text
    Accessible.description: enabled ? "" : Texts.dimmed
    Accessible.ignored: !visible
    Accessible.onPressAction: if (enabled) clicked()

    contentItem: Label {
        text: control.text; color: Theme.accentText
        font { pixelSize: Theme.small; weight: Font.Medium }
        horizontalAlignment: Text.AlignHCenter; verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        radius: 6
        color: control.down ? Theme.fillHover : control.hovered ? Theme.fill : "transparent"
        FocusRing { visible: control.visualFocus; distance: 0 }
    }
}
